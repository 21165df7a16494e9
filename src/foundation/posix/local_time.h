#pragma once
// Host dates are the machine's wall-clock time; file times are UTC. Both directions go through
// the system's time-zone data (localtime_r, mktime), so each date gets the offset in force at
// that date, not today's. Sub-second parts are carried across unchanged.

#include <time.h>

#include <memory>
#include <optional>

#include "foundation/date.h"

namespace slib {

std::shared_ptr<Date> UtcToLocalDate(const struct timespec& utc);
// None when the date has no time the system can keep.
std::optional<struct timespec> LocalDateToUtc(const Date& local);

}  // namespace slib
