// Windows keeps one rule per zone and year (GetTimeZoneInformationForYear), not the zones' whole
// history; its own conversion is the reference, and the cases say where it differs.

#include <windows.h>

#include <algorithm>

#include "attributes/date_answers.h"
#include "attributes/windows/system_minute.h"
#include "foundation/windows/unique_handles.h"

namespace items_test {

const bool kSystemKeepsZoneHistory = false;

// Wine has no Lord Howe zone and silently picks another.
std::optional<std::string> MissingZone(const Zone& zone) {
    DYNAMIC_TIME_ZONE_INFORMATION dynamic{};
    GetDynamicTimeZoneInformation(&dynamic);
    const std::wstring key = dynamic.TimeZoneKeyName;
    if (std::find(zone.windowsKeys.begin(), zone.windowsKeys.end(), key) !=
        zone.windowsKeys.end()) {
        return std::nullopt;
    }
    return "the system has no zone for " + std::string(zone.tz) + ": it chose \"" +
           std::string(key.begin(), key.end()) + "\" (bias " + std::to_string(dynamic.Bias) +
           ", daylight bias " + std::to_string(dynamic.DaylightBias) +
           "); the per-year rule arithmetic is covered natively";
}

std::string SystemUtc(const DateCase& c) {
    DYNAMIC_TIME_ZONE_INFORMATION dynamic{};
    TIME_ZONE_INFORMATION zone{};
    const SYSTEMTIME time = ToSystemTime(Parse(c.local));
    SYSTEMTIME utc{};
    if (GetDynamicTimeZoneInformation(&dynamic) == TIME_ZONE_ID_INVALID ||
        !GetTimeZoneInformationForYear(time.wYear, &dynamic, &zone) ||
        !TzSpecificLocalTimeToSystemTime(&zone, &time, &utc)) {
        return "none";
    }
    return FormatSystemTime(utc);
}

std::string UtcModified(const std::u16string& path) {
    const slib::UniqueFileHandle file(CreateFileW(
        slib::test::Wide(path), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    FILETIME written{};
    SYSTEMTIME utc{};
    if (!file.valid() || !GetFileTime(file.get(), nullptr, nullptr, &written) ||
        !FileTimeToSystemTime(&written, &utc)) {
        return "unreadable";
    }
    return FormatSystemTime(utc);
}

// 1601-01-01 00:00 UTC is file time 0, which tells the system to leave the time alone. East of
// Greenwich that is a local time on 1601-01-01 (in winter: the zone's bias); west of it a local
// time in 1600, refused as before the first file time.
std::vector<std::u16string> DatesTheFileCannotKeep(const std::u16string&) {
    TIME_ZONE_INFORMATION zone{};
    GetTimeZoneInformation(&zone);
    const int east = -zone.Bias;  // minutes
    char zero[128];
    snprintf(zero, sizeof zero, "Timestamp ( Date ( %d ; %d ; %d ) ; Time ( %d ; %d ; 0 ) )",
             east >= 0 ? 1 : 12, east >= 0 ? 1 : 31, east >= 0 ? 1601 : 1600,
             ((east % 1440) + 1440) % 1440 / 60, ((east % 60) + 60) % 60);
    return {
        slib::String::FromUtf8(zero)->units(),
        u"99999999999999999999999",
        u"Timestamp ( Date ( 1 ; 1 ; 1500 ) ; Time ( 0 ; 0 ; 0 ) )",
    };
}

}  // namespace items_test
