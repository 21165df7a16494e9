#pragma once
// The filter applied when a failure is reported to the host: only a fixed set of codes passes.

#include <cstdint>

namespace slib {

// Narrows `code` to 16 bits (so 65486 becomes -50), then lets through 0, -4, -33, -34, -35, -36,
// -43, -45, -47, -48, -50, -52, -53, -54 and -1303 unchanged; anything else becomes 2400.
int32_t ReportableCode(int32_t code);

}  // namespace slib
