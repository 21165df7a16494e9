#include "archive/entry_time.h"

#include <algorithm>

namespace archive {

uint64_t ClampToDosRange(uint64_t localTicks) {
    constexpr uint64_t kEarliest = 119600064000000000;  // 1980-01-01 00:00:00
    constexpr uint64_t kLatest = 159992927980000000;    // 2107-12-31 23:59:58
    return std::clamp(localTicks, kEarliest, kLatest);
}

bool FitsUnixTimeField(int64_t seconds) {
    return seconds >= 0 && seconds <= INT32_MAX;
}

}  // namespace archive
