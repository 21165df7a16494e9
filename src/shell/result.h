// Storing a function's outcome into the host's result value.
#pragma once

#include <cstdint>
#include <string_view>

#include "fmx_functions.h"

namespace fmlib {

// A host number (fixed point, precision 16) of native type number.
void SetResultCode(FmxData& result, int32_t code);
// Text of native type text, interpreted with the result's own locale.
void SetResultText(FmxData& result, const FmxText& text);
void SetResultText(FmxData& result, std::u16string_view text);

}  // namespace fmlib
