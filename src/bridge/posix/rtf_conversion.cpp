// No rich-text engine on Linux yet: the "rtf" encoding fails at once, in both directions.
#include "bridge/rtf_conversion.h"

#include "foundation/unavailable_here.h"

namespace bridge {

namespace {

constexpr char kRtfUnavailable[] = "The rtf encoding is not available on Linux yet";

}  // namespace

fmlib::TextPtr RtfToStyledText(const slib::Data&, const FmxData&, const FmxExprEnv&) {
    slib::ThrowUnavailableHere(kRtfUnavailable);
}

std::vector<uint8_t> StyledTextToRtf(const FmxText&, const FmxData&, const FmxExprEnv&) {
    slib::ThrowUnavailableHere(kRtfUnavailable);
}

}  // namespace bridge
