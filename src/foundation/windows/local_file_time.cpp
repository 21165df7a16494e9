#include "foundation/windows/local_file_time.h"

#include <cstring>
#include <map>
#include <mutex>

namespace slib {

namespace {

constexpr uint64_t kTicksPerSecond = Date::kFileTimeTicksPerSecond;
// 30827-12-31 23:59:59.9999999, the last moment SYSTEMTIME and the file system's calls accept.
constexpr uint64_t kLastTicks = 0x7FFF35F4F06C7FFF;

uint64_t Ticks(const FILETIME& time) {
    return (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

FILETIME FromTicks(uint64_t ticks) {
    FILETIME time;
    time.dwLowDateTime = static_cast<DWORD>(ticks);
    time.dwHighDateTime = static_cast<DWORD>(ticks >> 32);
    return time;
}

ZoneTransition TransitionOf(const SYSTEMTIME& time) {
    return {time.wYear, time.wMonth,  time.wDayOfWeek, time.wDay,
            time.wHour, time.wMinute, time.wSecond,    time.wMilliseconds};
}

ZoneRule RuleOf(const TIME_ZONE_INFORMATION& zone) {
    return {zone.Bias, zone.StandardBias, zone.DaylightBias, TransitionOf(zone.StandardDate),
            TransitionOf(zone.DaylightDate)};
}

// GetTimeZoneInformationForYear reads the registry on every call (over 100 us under Wine, once
// per zip entry): each year's rule is kept for as long as the machine's zone stays the same.
// Zip workers convert on threads of their own, hence the lock.
struct RuleCache {
    std::mutex mutex;
    DYNAMIC_TIME_ZONE_INFORMATION zone{};
    std::map<int64_t, ZoneRule> years;
};

RuleCache& Cache() {
    static RuleCache cache;
    return cache;
}

std::optional<uint64_t> LocalTicksToUtc(uint64_t ticks) {
    const std::shared_ptr<Date> local = Date::FromFileTimeTicks(ticks);
    const Date utc(LocalToUtcSeconds(local->seconds(), SystemZoneRule), local->microseconds());
    const std::optional<uint64_t> utcTicks = utc.toFileTimeTicks();
    if (!utcTicks) {
        return std::nullopt;
    }
    return *utcTicks + ticks % 10;  // the 100-ns ticks finer than a Date's microseconds
}

std::optional<uint64_t> UtcTicksToLocal(uint64_t ticks) {
    const std::shared_ptr<Date> utc = Date::FromFileTimeTicks(ticks);
    const Date local(UtcToLocalSeconds(utc->seconds(), SystemZoneRule), utc->microseconds());
    const std::optional<uint64_t> localTicks = local.toFileTimeTicks();
    if (!localTicks) {
        return std::nullopt;
    }
    return *localTicks + ticks % 10;
}

}  // namespace

ZoneRule SystemZoneRule(int64_t year) {
    DYNAMIC_TIME_ZONE_INFORMATION dynamic{};
    if (GetDynamicTimeZoneInformation(&dynamic) == TIME_ZONE_ID_INVALID) {
        return ZoneRule{};  // the system knows no zone: wall clock and UTC agree
    }
    RuleCache& cache = Cache();
    const std::lock_guard<std::mutex> lock(cache.mutex);
    if (std::memcmp(&cache.zone, &dynamic, sizeof dynamic) != 0) {
        cache.zone = dynamic;
        cache.years.clear();
    }
    const auto known = cache.years.find(year);
    if (known != cache.years.end()) {
        return known->second;
    }
    TIME_ZONE_INFORMATION zone{};
    // Only years a SYSTEMTIME holds have a rule of their own.
    if (year < 1601 || year > 30827 ||
        !GetTimeZoneInformationForYear(static_cast<USHORT>(year), &dynamic, &zone)) {
        zone.Bias = dynamic.Bias;
        zone.StandardBias = dynamic.StandardBias;
        zone.DaylightBias = dynamic.DaylightBias;
        zone.StandardDate = dynamic.StandardDate;
        zone.DaylightDate = dynamic.DaylightDate;
    }
    ZoneRule rule = RuleOf(zone);
    if (dynamic.DynamicDaylightTimeDisabled) {
        rule.standardDate.month = 0;  // "adjust for daylight saving time" is off
        rule.daylightDate.month = 0;
    }
    cache.years.emplace(year, rule);
    return rule;
}

std::optional<FILETIME> LocalFileTimeToUtc(const FILETIME& local) {
    const std::optional<uint64_t> utc = LocalTicksToUtc(Ticks(local));
    if (!utc || *utc == 0 || *utc > kLastTicks) {
        return std::nullopt;
    }
    return FromTicks(*utc);
}

std::optional<FILETIME> UtcFileTimeToLocal(const FILETIME& utc) {
    if (Ticks(utc) > kLastTicks) {
        return std::nullopt;
    }
    const std::optional<uint64_t> local = UtcTicksToLocal(Ticks(utc));
    if (!local) {
        return std::nullopt;
    }
    return FromTicks(*local);
}

std::optional<FILETIME> LocalDateToFileTime(const Date& local) {
    const std::optional<uint64_t> localTicks = local.toFileTimeTicks();
    if (!localTicks) {
        return std::nullopt;
    }
    return LocalFileTimeToUtc(FromTicks(*localTicks));
}

std::shared_ptr<Date> FileTimeToLocalDate(const FILETIME& utc) {
    const std::optional<FILETIME> local = UtcFileTimeToLocal(utc);
    if (!local) {
        return nullptr;
    }
    return Date::FromFileTimeTicks(Ticks(*local));
}

}  // namespace slib
