#include "bridge/rtf_engine.h"

#include <string_view>

#include "bridge/windows/rich_edit_control.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/rtf_font_names.h"
#include "foundation/rtf_group_depth.h"
#include "foundation/rtf_reader.h"

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
    const std::string_view bytes(reinterpret_cast<const char*>(rtf.bytes().data()), rtf.size());
    // Deeply nested groups crash the control's reader (under Wine, 100,000 of them take the
    // host down): such a document is refused as the control refuses what it cannot read.
    if (slib::RtfGroupDepth(bytes, slib::kRtfMaxGroupDepth) > slib::kRtfMaxGroupDepth) {
        slib::Throw(slib::kUnclassified, "Cannot convert rich text");
    }
    const slib::PlaceholderFontNames swapped = slib::ReplaceUnicodeFontNames(bytes);
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
