// Styled host text to RTF and back, through the system's rich-edit control.
#pragma once

#include <cstdint>
#include <vector>

#include "fmx_functions.h"
#include "foundation/data.h"
#include "shell/host_objects.h"

namespace bridge {

fmlib::TextPtr RtfToStyledText(const slib::Data& rtf);
std::vector<uint8_t> StyledTextToRtf(const FmxText& text);

}  // namespace bridge
