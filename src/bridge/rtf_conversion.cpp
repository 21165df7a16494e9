#include "bridge/rtf_conversion.h"

#include "bridge/rtf_engine.h"
#include "bridge/styled_text_runs.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace bridge {

std::vector<uint8_t> StyledTextToRtf(const FmxText& text, const FmxData& fontSource,
                                     const FmxExprEnv& env) {
    const slib::RichText rich = RichTextOf(text, fontSource, env);
    // RTF has no form for a NUL, and the system's control takes text up to one only.
    if (rich.text.find(u'\0') != std::u16string::npos) {
        slib::Throw(slib::kBadParameter, "Rich text cannot hold a NUL character");
    }
    const std::string rtf = RtfOfRichText(rich);
    return std::vector<uint8_t>(rtf.begin(), rtf.end());
}

fmlib::TextPtr RtfToStyledText(const slib::Data& rtf, const FmxData& fontSource,
                               const FmxExprEnv& env) {
    return StyledTextOf(RichTextOfRtf(rtf), fontSource, env);
}

}  // namespace bridge
