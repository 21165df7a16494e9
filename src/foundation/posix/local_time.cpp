#include "foundation/posix/local_time.h"

#include <cerrno>
#include <climits>

namespace slib {

namespace {

// Seconds from 0001-01-01 to 1970-01-01.
constexpr int64_t kUnixEpochSeconds = 62135596800;

}  // namespace

std::shared_ptr<Date> UtcToLocalDate(const struct timespec& utc) {
    struct tm local {};
    if (::localtime_r(&utc.tv_sec, &local) == nullptr) {
        return nullptr;
    }
    return std::make_shared<Date>(utc.tv_sec + local.tm_gmtoff + kUnixEpochSeconds,
                                  static_cast<int32_t>(utc.tv_nsec / 1000));
}

std::optional<struct timespec> LocalDateToUtc(const Date& local) {
    const CivilTime civil = local.civil();
    if (civil.year < 1 || civil.year > 9999) {
        return std::nullopt;
    }
    struct tm fields {};
    fields.tm_year = static_cast<int>(civil.year - 1900);
    fields.tm_mon = static_cast<int>(civil.month) - 1;
    fields.tm_mday = static_cast<int>(civil.day);
    fields.tm_hour = static_cast<int>(civil.hour);
    fields.tm_min = static_cast<int>(civil.minute);
    fields.tm_sec = static_cast<int>(civil.second);
    fields.tm_isdst = -1;  // the zone decides whether summer time was in force
    errno = 0;
    const time_t seconds = ::mktime(&fields);
    if (seconds == static_cast<time_t>(-1) && errno != 0) {
        return std::nullopt;
    }
    return timespec{seconds, static_cast<long>(civil.microseconds) * 1000};
}

}  // namespace slib
