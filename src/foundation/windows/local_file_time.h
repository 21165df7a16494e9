#pragma once
// Host timestamps are the machine's wall-clock time; file times are UTC. Both directions apply
// the zone's rule of the date's own year, as Windows keeps it per year (GetTimeZoneInformationFor
// Year): summer dates get the summer offset whatever today is, and a year whose rule differed
// (New York before 2007) gets its own. FileTimeToLocalFileTime and its inverse do neither: they
// use today's offset. Whole seconds go through the zone rule; the sub-second part (down to the
// 100 ns a file time holds, the microseconds a Date holds) is carried across unchanged.

#include <windows.h>

#include <memory>
#include <optional>

#include "foundation/date.h"
#include "foundation/zone_rule.h"

namespace slib {

// The rule of the machine's zone for `year`; today's rule where the system keeps no other.
ZoneRule SystemZoneRule(int64_t year);

// None when the local date has no file time the system keeps: at or before 1601-01-01 00:00 UTC
// (file time 0 tells the system "leave this time unchanged") or after the year 30827.
std::optional<FILETIME> LocalDateToFileTime(const Date& local);
// Null when the file time is beyond what a Date and the system's calendar hold.
std::shared_ptr<Date> FileTimeToLocalDate(const FILETIME& utc);

// The same conversions between file times, for callers that count in file times (zip entries).
std::optional<FILETIME> LocalFileTimeToUtc(const FILETIME& local);
std::optional<FILETIME> UtcFileTimeToLocal(const FILETIME& utc);

}  // namespace slib
