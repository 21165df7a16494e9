#pragma once
// slib::Date: a point in time as whole seconds plus microseconds since 0001-01-01 00:00:00 in the
// proleptic Gregorian calendar, the same epoch the host counts its timestamps from. A Date has no
// time zone: it holds whatever clock the caller gave it (host timestamps are local time, system
// file times UTC); converting between the two is the caller's business.

#include <cstdint>
#include <memory>
#include <optional>

#include "foundation/object.h"

namespace slib {

// A Date's calendar fields, as the clock it holds shows them.
struct CivilTime {
    int64_t year;
    unsigned month;  // 1 to 12
    unsigned day;    // 1 to 31
    unsigned hour;
    unsigned minute;
    unsigned second;
    int32_t microseconds;
};

class Date : public Object {
  public:
    // Seconds from 0001-01-01 to 1601-01-01, the epoch of Windows file times.
    static constexpr int64_t kFileTimeEpochSeconds = 50491123200;
    static constexpr int64_t kFileTimeTicksPerSecond = 10000000;  // 100-ns ticks

    // Microseconds outside 0..999999 carry into the seconds (also when negative).
    Date(int64_t seconds, int32_t microseconds);

    // Ticks finer than a microsecond are cut off.
    static std::shared_ptr<Date> FromFileTimeTicks(uint64_t ticks);
    // None for dates before 1601-01-01 or beyond the signed 64-bit tick range.
    std::optional<uint64_t> toFileTimeTicks() const;

    int64_t seconds() const { return seconds_; }
    int32_t microseconds() const { return microseconds_; }
    CivilTime civil() const;

    // "YYYY-MM-DD HH:MM:SS", with ".ffffff" when there are microseconds.
    std::shared_ptr<const String> description() const override;

  private:
    int64_t seconds_;
    int32_t microseconds_;
};

}  // namespace slib
