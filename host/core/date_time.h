// Dates, times and timestamps. The date part is a day number with the host's epoch:
// 1 January 0001 (proleptic Gregorian calendar) is day 1. The time part is a signed number of
// seconds plus microseconds; for a time of day it lies in [0, 86400), for a duration it may be
// negative or exceed a day. A timestamp counts seconds from 1/1/0001 0:00:00 (= 0).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/decimal.h"

namespace fmhost {

class DateTime {
  public:
    static constexpr int64_t kSecondsPerDay = 86400;

    DateTime() = default;  // day 0 (no date), time 0:00:00

    static DateTime FromDate(int64_t year, int64_t month, int64_t day);
    static DateTime FromTime(int64_t hours, int64_t minutes, int64_t seconds,
                             int64_t microseconds = 0);
    static DateTime Now();  // local wall-clock date and time

    // Out-of-range parts roll over: month 13 is January of the next year, day 0 the last day
    // of the previous month. Returns false (and changes nothing) when the year leaves
    // [-9999, 99999].
    bool SetNormalizedDate(int64_t year, int64_t month, int64_t day);
    bool SetNormalizedTime(int64_t hours, int64_t minutes, int64_t seconds,
                           int64_t microseconds = 0);
    void SetDate(const DateTime& other) { days_ = other.days_; }
    void SetTime(const DateTime& other);

    int64_t DaysSinceEpoch() const { return days_; }
    void SetDaysSinceEpoch(int64_t days) { days_ = days; }

    int64_t Year() const;
    int Month() const;
    int Day() const;
    bool IsLeapYear() const;
    int DayOfWeek() const;   // 1 = Sunday ... 7 = Saturday
    int DayOfYear() const;   // 1 = 1 January
    int WeekOfYear() const;  // week 1 holds 1 January; weeks start on Sunday

    int64_t Hour() const;  // may exceed 23 (or be negative) for durations
    int Minute() const;
    int Second() const;
    int32_t Microsecond() const { return micros_; }

    // Time part in seconds, with the microseconds as fraction.
    Decimal SecondsOfTime() const;
    void SetSecondsOfTime(const Decimal& seconds);  // fractions below 1 us are dropped
    // Seconds elapsed since 1/1/0001 0:00:00, date and time together.
    Decimal SecondsSinceEpoch() const;
    void SetSecondsSinceEpoch(const Decimal& seconds);

    // Text forms: "M/D/YYYY", "H:MM:SS" (with ".ffffff" when there are microseconds, trailing
    // zeros dropped) and "M/D/YYYY H:MM:SS".
    std::string DateText() const;
    std::string TimeText() const;
    std::string TimestampText() const;
    // Parsing accepts the same forms (also "YYYY-MM-DD", "H:MM", and AM/PM on a time).
    static std::optional<DateTime> ParseDate(std::u16string_view text);
    static std::optional<DateTime> ParseTime(std::u16string_view text);
    // A date alone is a timestamp at midnight.
    static std::optional<DateTime> ParseTimestamp(std::u16string_view text);

    friend bool operator==(const DateTime& a, const DateTime& b) {
        return a.days_ == b.days_ && a.seconds_ == b.seconds_ && a.micros_ == b.micros_;
    }
    friend bool operator!=(const DateTime& a, const DateTime& b) { return !(a == b); }

  private:
    int64_t days_ = 0;
    int64_t seconds_ = 0;  // floor of the time in seconds
    int32_t micros_ = 0;   // 0..999999, added to seconds_
};

}  // namespace fmhost
