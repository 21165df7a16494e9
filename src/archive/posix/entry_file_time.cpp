#include "archive/posix/entry_file_time.h"

#include "archive/zip_format.h"

namespace archive {

namespace {

constexpr int64_t kTicksPerSecond = 10000000;
constexpr int64_t kUnixEpochTicks = 116444736000000000;  // 1970-01-01 in file-time ticks
constexpr mode_t kPermissionBits = 0777;
constexpr mode_t kWriteBits = 0222;

void SetDosFields(time_t seconds, EntryTime& entry) {
    struct tm local = {};
    if (localtime_r(&seconds, &local) == nullptr) {
        return;
    }
    // Clamped as local ticks, as on Windows, then split again without any zone.
    const int64_t localSeconds = static_cast<int64_t>(seconds) + local.tm_gmtoff;
    const uint64_t ticks =
        ClampToDosRange(static_cast<uint64_t>(localSeconds * kTicksPerSecond + kUnixEpochTicks));
    const time_t clamped =
        static_cast<time_t>((static_cast<int64_t>(ticks) - kUnixEpochTicks) / kTicksPerSecond);
    struct tm fields = {};
    if (gmtime_r(&clamped, &fields) == nullptr) {
        return;
    }
    entry.dosDate = static_cast<uint16_t>((fields.tm_year - 80) << 9 | (fields.tm_mon + 1) << 5 |
                                          fields.tm_mday);
    entry.dosTime =
        static_cast<uint16_t>(fields.tm_hour << 11 | fields.tm_min << 5 | fields.tm_sec / 2);
}

}  // namespace

EntryTime EntryTimeFromStatus(const struct stat& status) {
    EntryTime entry;
    const timespec& modified = status.st_mtim;
    entry.hasFileTime = modified.tv_sec >= -kUnixEpochTicks / kTicksPerSecond;
    entry.fileTime = static_cast<uint64_t>(modified.tv_sec * kTicksPerSecond + kUnixEpochTicks +
                                           modified.tv_nsec / 100);
    entry.unixTime = modified.tv_sec;
    entry.hasUnixTime = FitsUnixTimeField(entry.unixTime);
    SetDosFields(modified.tv_sec, entry);
    entry.attributes = (status.st_mode & S_IWUSR) == 0 ? kDosAttributeReadOnly : 0;
    entry.unixMode = static_cast<uint16_t>(status.st_mode & (S_IFMT | kPermissionBits));
    return entry;
}

std::optional<timespec> ModificationFromEntryTime(const EntryTime& time) {
    if (time.hasFileTime && time.fileTime < (uint64_t{1} << 63)) {
        const int64_t sinceEpoch = static_cast<int64_t>(time.fileTime) - kUnixEpochTicks;
        int64_t seconds = sinceEpoch / kTicksPerSecond;
        int64_t rest = sinceEpoch % kTicksPerSecond;
        if (rest < 0) {
            --seconds;
            rest += kTicksPerSecond;
        }
        return timespec{static_cast<time_t>(seconds), static_cast<long>(rest * 100)};
    }
    if (time.hasUnixTime) {
        return timespec{static_cast<time_t>(time.unixTime), 0};
    }
    struct tm local = {};
    local.tm_year = (time.dosDate >> 9) + 80;
    local.tm_mon = ((time.dosDate >> 5) & 0x0F) - 1;
    local.tm_mday = time.dosDate & 0x1F;
    local.tm_hour = time.dosTime >> 11;
    local.tm_min = (time.dosTime >> 5) & 0x3F;
    local.tm_sec = (time.dosTime & 0x1F) * 2;
    local.tm_isdst = -1;
    if (local.tm_mon < 0 || local.tm_mon > 11 || local.tm_mday == 0 || local.tm_hour > 23 ||
        local.tm_min > 59 || local.tm_sec > 59) {
        return std::nullopt;
    }
    const time_t seconds = mktime(&local);
    if (seconds == static_cast<time_t>(-1)) {
        return std::nullopt;
    }
    return timespec{seconds, 0};
}

mode_t UnpackedFileMode(const EntryTime& time, mode_t umask) {
    if (time.unixMode != 0) {
        return time.unixMode & kPermissionBits;
    }
    const mode_t mode = 0666 & ~umask;
    return (time.attributes & kDosAttributeReadOnly) != 0 ? mode & ~kWriteBits : mode;
}

}  // namespace archive
