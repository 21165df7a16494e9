#include "bridge/rtf_conversion.h"

#include "foundation/exception.h"

namespace bridge {

// The rich-edit round trip has not landed in this build.
fmlib::TextPtr RtfToStyledText(const slib::Data&) {
    slib::Throw(-4, "Not implemented in this build");
}

std::vector<uint8_t> StyledTextToRtf(const FmxText&) {
    slib::Throw(-4, "Not implemented in this build");
}

}  // namespace bridge
