#include "core/calendar.h"

namespace fmhost::calendar {
namespace {

// Days from 1970-01-01 to 0001-01-01 is -719162; our day 1 is that date.
constexpr int64_t kUnixToDayNumber = 719163;

}  // namespace

int64_t FloorDiv(int64_t a, int64_t b) {
    const int64_t q = a / b;
    return (a % b != 0 && ((a < 0) != (b < 0))) ? q - 1 : q;
}

int64_t FloorMod(int64_t a, int64_t b) {
    return a - FloorDiv(a, b) * b;
}

// The era-based algorithms below count days relative to 1970-01-01.
int64_t DayNumber(int64_t year, int month, int day) {
    const int64_t y = year - (month <= 2 ? 1 : 0);
    const int64_t era = FloorDiv(y, 400);
    const int64_t yearOfEra = y - era * 400;
    const int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468 + kUnixToDayNumber;
}

CivilDate FromDayNumber(int64_t dayNumber) {
    const int64_t z = dayNumber - kUnixToDayNumber + 719468;
    const int64_t era = FloorDiv(z, 146097);
    const int64_t dayOfEra = z - era * 146097;
    const int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int64_t mp = (5 * dayOfYear + 2) / 153;
    const int day = static_cast<int>(dayOfYear - (153 * mp + 2) / 5 + 1);
    const int month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

bool IsLeapYear(int64_t year) {
    return FloorMod(year, 4) == 0 && (FloorMod(year, 100) != 0 || FloorMod(year, 400) == 0);
}

int DaysInMonth(int64_t year, int month) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month == 2 && IsLeapYear(year))
        return 29;
    return kDays[(month - 1) % 12];
}

}  // namespace fmhost::calendar
