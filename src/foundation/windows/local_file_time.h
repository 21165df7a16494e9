#pragma once
// Host timestamps are the machine's wall-clock time; file times are UTC. Both directions apply
// the time zone's offset in force at the date itself (summer dates get the summer offset, whatever
// today is), which FileTimeToLocalFileTime and its inverse do not: they use today's offset.
// Whole seconds go through the system's time-zone conversion; the sub-second part (down to the
// 100 ns a file time holds, the microseconds a Date holds) is carried across unchanged.

#include <windows.h>

#include <memory>
#include <optional>

#include "foundation/date.h"

namespace slib {

// None when the local date has no file time (before 1601 in UTC, or beyond the system's range).
std::optional<FILETIME> LocalDateToFileTime(const Date& local);
// Null when the system cannot convert the file time.
std::shared_ptr<Date> FileTimeToLocalDate(const FILETIME& utc);

}  // namespace slib
