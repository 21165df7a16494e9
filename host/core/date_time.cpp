#include "core/date_time.h"

#include <chrono>
#include <ctime>

#include "core/calendar.h"

namespace fmhost {

using calendar::FloorDiv;
using calendar::FloorMod;

namespace {

constexpr int64_t kMinYear = -9999;
constexpr int64_t kMaxYear = 99999;
constexpr int64_t kMaxHours = int64_t(1) << 40;  // keeps every sum below far from overflow
constexpr int64_t kMicrosPerSecond = 1000000;

}  // namespace

DateTime DateTime::FromDate(int64_t year, int64_t month, int64_t day) {
    DateTime out;
    out.SetNormalizedDate(year, month, day);
    return out;
}

DateTime DateTime::FromTime(int64_t hours, int64_t minutes, int64_t seconds, int64_t microseconds) {
    DateTime out;
    out.SetNormalizedTime(hours, minutes, seconds, microseconds);
    return out;
}

DateTime DateTime::Now() {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    const auto sinceEpoch = now.time_since_epoch();
    const int64_t micros =
        FloorMod(std::chrono::duration_cast<std::chrono::microseconds>(sinceEpoch).count(),
                 kMicrosPerSecond);
    DateTime out = FromDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
    out.SetNormalizedTime(local.tm_hour, local.tm_min, local.tm_sec, micros);
    return out;
}

bool DateTime::SetNormalizedDate(int64_t year, int64_t month, int64_t day) {
    constexpr int64_t kLimit = int64_t(1) << 40;
    if (year < -kLimit || year > kLimit || month < -kLimit || month > kLimit || day < -kLimit ||
        day > kLimit) {
        return false;
    }
    const int64_t fullYear = year + FloorDiv(month - 1, 12);
    const int normalMonth = static_cast<int>(FloorMod(month - 1, 12) + 1);
    if (fullYear < kMinYear || fullYear > kMaxYear)
        return false;
    const int64_t days = calendar::DayNumber(fullYear, normalMonth, 1) + (day - 1);
    const int64_t resultYear = calendar::FromDayNumber(days).year;
    if (resultYear < kMinYear || resultYear > kMaxYear)
        return false;
    days_ = days;
    return true;
}

bool DateTime::SetNormalizedTime(int64_t hours, int64_t minutes, int64_t seconds,
                                 int64_t microseconds) {
    if (hours < -kMaxHours || hours > kMaxHours || minutes < -kMaxHours * 60 ||
        minutes > kMaxHours * 60 || seconds < -kMaxHours * 3600 || seconds > kMaxHours * 3600) {
        return false;
    }
    seconds_ = hours * 3600 + minutes * 60 + seconds + FloorDiv(microseconds, kMicrosPerSecond);
    micros_ = static_cast<int32_t>(FloorMod(microseconds, kMicrosPerSecond));
    return true;
}

void DateTime::SetTime(const DateTime& other) {
    seconds_ = other.seconds_;
    micros_ = other.micros_;
}

int64_t DateTime::Year() const {
    return calendar::FromDayNumber(days_).year;
}
int DateTime::Month() const {
    return calendar::FromDayNumber(days_).month;
}
int DateTime::Day() const {
    return calendar::FromDayNumber(days_).day;
}
bool DateTime::IsLeapYear() const {
    return calendar::IsLeapYear(Year());
}

// Day 1 (1/1/0001) was a Monday.
int DateTime::DayOfWeek() const {
    return static_cast<int>(FloorMod(days_, 7)) + 1;
}

int DateTime::DayOfYear() const {
    return static_cast<int>(days_ - calendar::DayNumber(Year(), 1, 1)) + 1;
}

int DateTime::WeekOfYear() const {
    DateTime januaryFirst;
    januaryFirst.days_ = calendar::DayNumber(Year(), 1, 1);
    return (DayOfYear() - 1 + januaryFirst.DayOfWeek() - 1) / 7 + 1;
}

// Hours carry the sign of a negative duration; minutes and seconds are its magnitude's.
int64_t DateTime::Hour() const {
    const int64_t whole = seconds_ < 0 && micros_ > 0 ? seconds_ + 1 : seconds_;
    return whole / 3600;
}

int DateTime::Minute() const {
    const int64_t whole = seconds_ < 0 && micros_ > 0 ? seconds_ + 1 : seconds_;
    return static_cast<int>((whole < 0 ? -whole : whole) / 60 % 60);
}

int DateTime::Second() const {
    const int64_t whole = seconds_ < 0 && micros_ > 0 ? seconds_ + 1 : seconds_;
    return static_cast<int>((whole < 0 ? -whole : whole) % 60);
}

Decimal DateTime::SecondsOfTime() const {
    return Decimal(seconds_) + Decimal(micros_) / Decimal(kMicrosPerSecond);
}

void DateTime::SetSecondsOfTime(const Decimal& seconds) {
    if (!seconds.IsValid())
        return;
    const Decimal whole = seconds.Floor();
    seconds_ = whole.ToInt64();
    micros_ = static_cast<int32_t>(((seconds - whole) * Decimal(kMicrosPerSecond)).ToInt64());
}

Decimal DateTime::SecondsSinceEpoch() const {
    return Decimal(days_ - 1) * Decimal(kSecondsPerDay) + SecondsOfTime();
}

void DateTime::SetSecondsSinceEpoch(const Decimal& seconds) {
    if (!seconds.IsValid())
        return;
    SetSecondsOfTime(seconds);
    days_ = FloorDiv(seconds_, kSecondsPerDay) + 1;
    seconds_ = FloorMod(seconds_, kSecondsPerDay);
}

}  // namespace fmhost
