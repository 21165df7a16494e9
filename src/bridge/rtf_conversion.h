// Styled host text to RTF and back (the system's rich-edit control on Windows, our own reader and
// writer on Linux): font, size, colour, bold, italic, the three underline kinds, strikethrough,
// super- and subscript, small and all capitals, and any Unicode character.
#pragma once

#include <cstdint>
#include <vector>

#include "fmx_functions.h"
#include "foundation/data.h"
#include "shell/host_objects.h"

namespace bridge {

// `fontSource` and `env` turn font names into the database's font ids.
fmlib::TextPtr RtfToStyledText(const slib::Data& rtf, const FmxData& fontSource,
                               const FmxExprEnv& env);
// `fontSource` (the value holding `text`) and `env` turn font ids into names.
std::vector<uint8_t> StyledTextToRtf(const FmxText& text, const FmxData& fontSource,
                                     const FmxExprEnv& env);

}  // namespace bridge
