#include "foundation/windows/local_file_time.h"

namespace slib {

namespace {

constexpr uint64_t kTicksPerSecond = Date::kFileTimeTicksPerSecond;

uint64_t Ticks(const FILETIME& time) {
    return (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

FILETIME FromTicks(uint64_t ticks) {
    FILETIME time;
    time.dwLowDateTime = static_cast<DWORD>(ticks);
    time.dwHighDateTime = static_cast<DWORD>(ticks >> 32);
    return time;
}

// Whole seconds through one of the system's zone conversions, the sub-second ticks kept.
template <typename ZoneConversion>
std::optional<uint64_t> ConvertWholeSeconds(uint64_t ticks, ZoneConversion convert) {
    const FILETIME whole = FromTicks(ticks - ticks % kTicksPerSecond);
    SYSTEMTIME from;
    SYSTEMTIME to;
    FILETIME converted;
    if (!FileTimeToSystemTime(&whole, &from) || !convert(nullptr, &from, &to) ||
        !SystemTimeToFileTime(&to, &converted)) {
        return std::nullopt;
    }
    return Ticks(converted) + ticks % kTicksPerSecond;
}

}  // namespace

std::optional<FILETIME> LocalDateToFileTime(const Date& local) {
    const std::optional<uint64_t> localTicks = local.toFileTimeTicks();
    if (!localTicks) {
        return std::nullopt;
    }
    const std::optional<uint64_t> utc =
        ConvertWholeSeconds(*localTicks, TzSpecificLocalTimeToSystemTime);
    if (!utc) {
        return std::nullopt;
    }
    return FromTicks(*utc);
}

std::shared_ptr<Date> FileTimeToLocalDate(const FILETIME& utc) {
    const std::optional<uint64_t> local =
        ConvertWholeSeconds(Ticks(utc), SystemTimeToTzSpecificLocalTime);
    if (!local) {
        return nullptr;
    }
    return Date::FromFileTimeTicks(*local);
}

}  // namespace slib
