#include "bridge/styled_text_runs.h"

#include <utility>

#include "shell/host_data.h"
#include "shell/host_text.h"
#include "shell/host_values.h"

namespace bridge {

namespace {

slib::RichFormat FormatOf(const FmxCharacterStyle& style, const FmxData& fontSource,
                          const FmxExprEnv& env) {
    slib::RichFormat format;
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

fmlib::CharacterStylePtr StyleOf(const slib::RichFormat& format, const FmxData& fontSource,
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

slib::RichText RichTextOf(const FmxText& text, const FmxData& fontSource, const FmxExprEnv& env) {
    slib::RichText rich;
    rich.text = fmlib::TextUnits(text);
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
                rich.runs.push_back({start, position, FormatOf(*current, fontSource, env)});
            }
            std::swap(current, next);
            start = position;
        }
    }
    return rich;
}

fmlib::TextPtr StyledTextOf(const slib::RichText& rich, const FmxData& fontSource,
                            const FmxExprEnv& env) {
    fmlib::TextPtr text = fmlib::MakeText(rich.text);
    for (const slib::RichRun& run : rich.runs) {
        const fmlib::CharacterStylePtr style = StyleOf(run.format, fontSource, env);
        fmlib::TextSetStyle(*text, *style, static_cast<uint32_t>(run.start),
                            static_cast<uint32_t>(run.end - run.start));
    }
    return text;
}

}  // namespace bridge
