#include "bridge/rtf_engine.h"

#include <string_view>

#include "bridge/windows/rich_edit_control.h"
#include "foundation/rtf_font_names.h"

namespace bridge {

std::string RtfOfRichText(const slib::RichText& rich) {
    RichEditControl control;
    control.setText(rich.text);
    for (const slib::RichRun& run : rich.runs) {
        control.format(run.start, run.end, run.format);
    }
    return control.rtf();
}

slib::RichText RichTextOfRtf(const slib::Data& rtf) {
    const slib::PlaceholderFontNames swapped = slib::ReplaceUnicodeFontNames(
        std::string_view(reinterpret_cast<const char*>(rtf.bytes().data()), rtf.size()));
    RichEditControl control;
    control.loadRtf(reinterpret_cast<const uint8_t*>(swapped.rtf.data()), swapped.rtf.size());
    slib::RichText rich;
    rich.text = control.text();
    rich.runs = control.runs();
    for (slib::RichRun& run : rich.runs) {
        for (const auto& [placeholder, name] : swapped.names) {
            if (run.format.font == placeholder) {
                run.format.font = name;
            }
        }
    }
    return rich;
}

}  // namespace bridge
