#pragma once
// An entry's modification time in the two forms a zip archive keeps: the DOS date and time of the
// header (local time, two-second steps) and, when it fits, Unix seconds for the 0x5455 extra field.

#include <cstdint>

namespace archive {

struct EntryTime {
    uint16_t dosTime = 0;
    uint16_t dosDate = (1 << 5) | 1;  // 1980-01-01, the earliest DOS date
    bool hasUnixTime = false;
    int64_t unixTime = 0;
};

}  // namespace archive
