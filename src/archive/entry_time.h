#pragma once
// An entry's modification time in the three forms a zip archive keeps: the DOS date and time of
// the header (local time, two-second steps, 1980 to 2107 only), Unix seconds for the 0x5455 extra
// field, and the exact UTC file time of the NTFS extra field (0x000A) that Windows tools write.
// The read-only and hidden bits and the Unix mode travel with it: like the time, they are set on
// a file once its bytes are written.

#include <cstdint>

namespace archive {

struct EntryTime {
    uint16_t dosTime = 0;
    uint16_t dosDate = (1 << 5) | 1;  // 1980-01-01, the earliest DOS date
    bool hasUnixTime = false;
    int64_t unixTime = 0;
    bool hasFileTime = false;
    uint64_t fileTime = 0;   // 100 ns ticks since 1601-01-01 UTC
    uint8_t attributes = 0;  // kDosAttributeReadOnly and kDosAttributeHidden, nothing else
    // Unix file type and permission bits (st_mode), kept with version-made-by Unix; 0: none.
    uint16_t unixMode = 0;
};

// Local file-time ticks moved into the range the DOS fields hold, 1980-01-01 00:00:00 to
// 2107-12-31 23:59:58: a later time would wrap to 1980 and onwards, an earlier one has no form.
uint64_t ClampToDosRange(uint64_t localTicks);

// Whether the 0x5455 field can carry these Unix seconds so that every reader agrees: it is
// signed 32 bits in the format but read as unsigned by some tools, so 1970 to 2038 only.
bool FitsUnixTimeField(int64_t seconds);

}  // namespace archive
