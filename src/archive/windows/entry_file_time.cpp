#include "archive/windows/entry_file_time.h"

#include "foundation/windows/local_file_time.h"

namespace archive {

namespace {

constexpr int64_t kTicksPerSecond = 10000000;
constexpr int64_t kUnixEpochTicks = 116444736000000000;  // 1970-01-01 in FILETIME ticks

FILETIME& ClampedToDosRange(FILETIME& local) {
    ULARGE_INTEGER ticks;
    ticks.LowPart = local.dwLowDateTime;
    ticks.HighPart = local.dwHighDateTime;
    ticks.QuadPart = ClampToDosRange(ticks.QuadPart);
    local.dwLowDateTime = ticks.LowPart;
    local.dwHighDateTime = ticks.HighPart;
    return local;
}

}  // namespace

EntryTime EntryTimeFromFileTime(const FILETIME& time) {
    EntryTime entry;
    ULARGE_INTEGER ticks;
    ticks.LowPart = time.dwLowDateTime;
    ticks.HighPart = time.dwHighDateTime;
    entry.hasFileTime = true;
    entry.fileTime = ticks.QuadPart;
    entry.unixTime = (static_cast<int64_t>(ticks.QuadPart) - kUnixEpochTicks) / kTicksPerSecond;
    entry.hasUnixTime = FitsUnixTimeField(entry.unixTime);
    // The DOS fields in the local time of the file's own date, as the file's dates show.
    std::optional<FILETIME> local = slib::UtcFileTimeToLocal(time);
    WORD date = 0;
    WORD dosTime = 0;
    if (local && FileTimeToDosDateTime(&ClampedToDosRange(*local), &date, &dosTime)) {
        entry.dosDate = date;
        entry.dosTime = dosTime;
    }
    return entry;
}

std::optional<FILETIME> FileTimeFromEntryTime(const EntryTime& time) {
    FILETIME result;
    if (time.hasFileTime && time.fileTime < (uint64_t{1} << 63)) {
        result.dwLowDateTime = static_cast<DWORD>(time.fileTime);
        result.dwHighDateTime = static_cast<DWORD>(time.fileTime >> 32);
        return result;
    }
    if (time.hasUnixTime && time.unixTime >= -kUnixEpochTicks / kTicksPerSecond) {
        ULARGE_INTEGER ticks;
        ticks.QuadPart = static_cast<ULONGLONG>(time.unixTime * kTicksPerSecond + kUnixEpochTicks);
        result.dwLowDateTime = ticks.LowPart;
        result.dwHighDateTime = ticks.HighPart;
        return result;
    }
    FILETIME local;
    if (DosDateTimeToFileTime(time.dosDate, time.dosTime, &local)) {
        return slib::LocalFileTimeToUtc(local);
    }
    return std::nullopt;
}

uint8_t KeptAttributes(DWORD attributes) {
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return 0;
    }
    return static_cast<uint8_t>(attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN));
}

}  // namespace archive
