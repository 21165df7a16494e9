// Storing a function's outcome into the host's result value.
#pragma once

#include <cstdint>
#include <string_view>

#include "fmx_functions.h"
#include "foundation/date.h"

namespace fmlib {

// A host number (fixed point, precision 16) of native type number.
void SetResultCode(FmxData& result, int32_t code);
// Any 64-bit integer (sizes beyond 4 GB), as SetResultCode stores numbers.
void SetResultInteger(FmxData& result, int64_t value);
// A timestamp of native type timestamp, with the date's fields as they stand.
void SetResultTimestamp(FmxData& result, const slib::Date& date);
// Text of native type text, interpreted with the result's own locale.
void SetResultText(FmxData& result, const FmxText& text);
void SetResultText(FmxData& result, std::u16string_view text);

}  // namespace fmlib
