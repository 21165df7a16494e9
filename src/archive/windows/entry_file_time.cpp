#include "archive/windows/entry_file_time.h"

#include "foundation/windows/local_file_time.h"

namespace archive {

namespace {

constexpr int64_t kTicksPerSecond = 10000000;
constexpr int64_t kUnixEpochTicks = 116444736000000000;  // 1970-01-01 in FILETIME ticks

}  // namespace

EntryTime EntryTimeFromFileTime(const FILETIME& time) {
    EntryTime entry;
    ULARGE_INTEGER ticks;
    ticks.LowPart = time.dwLowDateTime;
    ticks.HighPart = time.dwHighDateTime;
    entry.hasUnixTime = true;
    entry.unixTime = (static_cast<int64_t>(ticks.QuadPart) - kUnixEpochTicks) / kTicksPerSecond;
    // The DOS fields in the local time of the file's own date, as the file's dates show.
    const std::optional<FILETIME> local = slib::UtcFileTimeToLocal(time);
    WORD date = 0;
    WORD dosTime = 0;
    if (local && FileTimeToDosDateTime(&*local, &date, &dosTime)) {
        entry.dosDate = date;
        entry.dosTime = dosTime;
    }
    return entry;
}

std::optional<FILETIME> FileTimeFromEntryTime(const EntryTime& time) {
    FILETIME result;
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

}  // namespace archive
