#include "foundation/date.h"

#include <cinttypes>
#include <cstdio>
#include <limits>

#include "foundation/utf16_string.h"

namespace slib {

namespace {

constexpr int32_t kMicrosPerSecond = 1000000;
constexpr int64_t kSecondsPerDay = 86400;
constexpr int64_t kDaysFromEpochTo1970 = 719162;

int64_t FloorDiv(int64_t a, int64_t b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

struct CivilDate {
    int64_t year;
    unsigned month;
    unsigned day;
};

// Days since 1970-01-01 to a proleptic Gregorian date (H. Hinnant's civil_from_days).
CivilDate CivilFromDays(int64_t days) {
    days += 719468;
    const int64_t era = FloorDiv(days, 146097);
    const unsigned dayOfEra = static_cast<unsigned>(days - era * 146097);
    const unsigned yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const unsigned monthIndex = (5 * dayOfYear + 2) / 153;
    const unsigned day = dayOfYear - (153 * monthIndex + 2) / 5 + 1;
    const unsigned month = monthIndex < 10 ? monthIndex + 3 : monthIndex - 9;
    const int64_t year = static_cast<int64_t>(yearOfEra) + era * 400 + (month <= 2);
    return {year, month, day};
}

}  // namespace

Date::Date(int64_t seconds, int32_t microseconds) {
    const int64_t carry = FloorDiv(microseconds, kMicrosPerSecond);
    microseconds_ = static_cast<int32_t>(microseconds - carry * kMicrosPerSecond);
    if (__builtin_add_overflow(seconds, carry, &seconds_)) {
        seconds_ =
            carry < 0 ? std::numeric_limits<int64_t>::min() : std::numeric_limits<int64_t>::max();
    }
}

std::shared_ptr<Date> Date::FromFileTimeTicks(uint64_t ticks) {
    const auto wholeSeconds = static_cast<int64_t>(ticks / kFileTimeTicksPerSecond);
    const auto micros = static_cast<int32_t>((ticks % kFileTimeTicksPerSecond) / 10);
    return std::make_shared<Date>(kFileTimeEpochSeconds + wholeSeconds, micros);
}

std::optional<uint64_t> Date::toFileTimeTicks() const {
    if (seconds_ < kFileTimeEpochSeconds) {
        return std::nullopt;
    }
    const int64_t sinceFileTimeEpoch = seconds_ - kFileTimeEpochSeconds;
    int64_t ticks = 0;
    if (__builtin_mul_overflow(sinceFileTimeEpoch, kFileTimeTicksPerSecond, &ticks) ||
        __builtin_add_overflow(ticks, int64_t{microseconds_} * 10, &ticks)) {
        return std::nullopt;
    }
    return static_cast<uint64_t>(ticks);
}

CivilTime Date::civil() const {
    const int64_t days = FloorDiv(seconds_, kSecondsPerDay);
    const auto secondOfDay = static_cast<unsigned>(seconds_ - days * kSecondsPerDay);
    const CivilDate date = CivilFromDays(days - kDaysFromEpochTo1970);
    return {date.year,        date.month,   date.day, secondOfDay / 3600, secondOfDay / 60 % 60,
            secondOfDay % 60, microseconds_};
}

std::shared_ptr<const String> Date::description() const {
    const CivilTime time = civil();
    char text[64];
    int length =
        std::snprintf(text, sizeof text, "%04" PRId64 "-%02u-%02u %02u:%02u:%02u", time.year,
                      time.month, time.day, time.hour, time.minute, time.second);
    if (microseconds_ != 0 && length > 0) {
        std::snprintf(text + length, sizeof text - static_cast<size_t>(length), ".%06d",
                      static_cast<int>(microseconds_));
    }
    return String::FromUtf8(text);
}

}  // namespace slib
