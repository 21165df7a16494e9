#include "bridge/rtf_conversion.h"

#include <string_view>

#include "bridge/windows/rich_edit_control.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/rtf_font_names.h"
#include "shell/host_data.h"
#include "shell/host_text.h"
#include "shell/host_values.h"

namespace bridge {

namespace {

RichFormat FormatOf(const FmxCharacterStyle& style, const FmxData& fontSource,
                    const FmxExprEnv& env) {
    RichFormat format;
    if (fmlib::CharacterStyleIsFontEnabled(style)) {
        const fmlib::TextPtr name = fmlib::NewText();
        if (fmlib::DataGetPostscriptFontInfo(fontSource, fmlib::CharacterStyleGetFont(style), *name,
                                             env)) {
            format.font = fmlib::TextUnits(*name);
        }
    }
    if (fmlib::CharacterStyleIsSizeEnabled(style)) {
        format.size = fmlib::CharacterStyleGetSize(style);
    }
    if (fmlib::CharacterStyleIsColorEnabled(style)) {
        const FmxColor& color = fmlib::CharacterStyleGetColor(style);
        format.hasColor = true;
        format.red = fmlib::ColorGetRed(color);
        format.green = fmlib::ColorGetGreen(color);
        format.blue = fmlib::ColorGetBlue(color);
    }
    if (fmlib::CharacterStyleIsAnyFaceEnabled(style)) {
        format.face = fmlib::CharacterStyleGetFace(style);
    }
    return format;
}

fmlib::CharacterStylePtr StyleOf(const RichFormat& format, const FmxData& fontSource,
                                 const FmxExprEnv& env) {
    fmlib::CharacterStylePtr style = fmlib::NewCharacterStyle();
    if (!format.font.empty()) {
        const fmlib::TextPtr name = fmlib::MakeText(format.font);
        fmlib::CharacterStyleSetFont(*style,
                                     fmlib::DataGetPostscriptFontID(fontSource, *name, env));
    }
    if (format.size > 0) {
        fmlib::CharacterStyleSetSize(*style, format.size);
    }
    if (format.hasColor) {
        const fmlib::ColorPtr color = fmlib::NewColor(format.red, format.green, format.blue);
        fmlib::CharacterStyleSetColor(*style, *color);
    }
    if (format.face != 0) {
        fmlib::CharacterStyleSetFace(*style, format.face);
    }
    return style;
}

}  // namespace

std::vector<uint8_t> StyledTextToRtf(const FmxText& text, const FmxData& fontSource,
                                     const FmxExprEnv& env) {
    const std::u16string units = fmlib::TextUnits(text);
    // The control takes text up to a NUL only; RTF has no form for one either.
    if (units.find(u'\0') != std::u16string::npos) {
        slib::Throw(slib::kBadParameter, "Rich text cannot hold a NUL character");
    }
    RichEditControl control;
    control.setText(units);
    const uint32_t size = fmlib::TextSize(text);
    fmlib::CharacterStylePtr current = fmlib::NewCharacterStyle();
    fmlib::CharacterStylePtr next = fmlib::NewCharacterStyle();
    uint32_t start = 0;
    for (uint32_t position = 0; position <= size; ++position) {
        const bool atEnd = position == size;
        if (!atEnd) {
            fmlib::TextGetStyle(text, *next, position);
        }
        if (position == 0) {
            std::swap(current, next);
            continue;
        }
        if (atEnd || !fmlib::CharacterStyleEquals(*current, *next)) {
            if (!fmlib::CharacterStyleIsAllDisabled(*current)) {
                control.format(start, position, FormatOf(*current, fontSource, env));
            }
            std::swap(current, next);
            start = position;
        }
    }
    const std::string rtf = control.rtf();
    return std::vector<uint8_t>(rtf.begin(), rtf.end());
}

fmlib::TextPtr RtfToStyledText(const slib::Data& rtf, const FmxData& fontSource,
                               const FmxExprEnv& env) {
    const slib::PlaceholderFontNames swapped = slib::ReplaceUnicodeFontNames(
        std::string_view(reinterpret_cast<const char*>(rtf.bytes().data()), rtf.size()));
    RichEditControl control;
    control.loadRtf(reinterpret_cast<const uint8_t*>(swapped.rtf.data()), swapped.rtf.size());
    fmlib::TextPtr text = fmlib::MakeText(control.text());
    for (const RichEditControl::Run& run : control.runs()) {
        RichFormat format = run.format;
        for (const auto& [placeholder, name] : swapped.names) {
            if (format.font == placeholder) {
                format.font = name;
            }
        }
        const fmlib::CharacterStylePtr style = StyleOf(format, fontSource, env);
        fmlib::TextSetStyle(*text, *style, static_cast<uint32_t>(run.start),
                            static_cast<uint32_t>(run.end - run.start));
    }
    return text;
}

}  // namespace bridge
