#include "bridge/rtf_conversion.h"

#include "bridge/rich_edit_control.h"
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
    RichEditControl control;
    control.setText(fmlib::TextUnits(text));
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
    RichEditControl control;
    control.loadRtf(rtf.bytes().data(), rtf.size());
    fmlib::TextPtr text = fmlib::MakeText(control.text());
    for (const RichEditControl::Run& run : control.runs()) {
        const fmlib::CharacterStylePtr style = StyleOf(run.format, fontSource, env);
        fmlib::TextSetStyle(*text, *style, static_cast<uint32_t>(run.start),
                            static_cast<uint32_t>(run.end - run.start));
    }
    return text;
}

}  // namespace bridge
