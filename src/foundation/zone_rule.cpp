#include "foundation/zone_rule.h"

#include <algorithm>

#include "foundation/date.h"

namespace slib {

namespace {

constexpr int64_t kSecondsPerDay = 86400;

int64_t FloorDiv(int64_t a, int64_t b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

// Days since 0001-01-01 (a Monday) of a proleptic Gregorian date (H. Hinnant's days_from_civil).
int64_t DaysFromCivil(int64_t year, unsigned month, unsigned day) {
    year -= month <= 2;
    const int64_t era = FloorDiv(year, 400);
    const auto yearOfEra = static_cast<unsigned>(year - era * 400);
    const unsigned dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    const unsigned dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + static_cast<int64_t>(dayOfEra) - 306;  // 0000-03-01 is day -306
}

unsigned DaysInMonth(int64_t year, unsigned month) {
    static const unsigned kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[(month - 1) % 12];
}

int64_t YearOf(int64_t seconds) {
    return Date(seconds, 0).civil().year;
}

bool HasDaylightTime(const ZoneRule& rule) {
    return rule.daylightDate.month != 0 && rule.standardDate.month != 0 &&
           rule.daylightBias != rule.standardBias;
}

// The wall-clock seconds at which `transition` happens in `year`.
int64_t TransitionSeconds(const ZoneTransition& transition, int64_t year) {
    const unsigned month = std::clamp(transition.month, 1u, 12u);
    unsigned day = transition.day;
    if (transition.year == 0) {
        const int64_t first = DaysFromCivil(year, month, 1);
        const auto firstWeekday = static_cast<unsigned>((first + 1) % 7);  // 0 Sunday
        const unsigned occurrence = std::clamp(transition.day, 1u, 5u);
        day = 1 + (transition.dayOfWeek % 7 + 7 - firstWeekday) % 7 + 7 * (occurrence - 1);
        while (day > DaysInMonth(year, month)) {
            day -= 7;  // the fifth occurrence means the last
        }
    }
    day = std::clamp(day, 1u, DaysInMonth(year, month));
    // A transition at 23:59:59.999 is one at midnight.
    const int64_t roundUp = transition.milliseconds > 0 ? 1 : 0;
    return DaysFromCivil(year, month, day) * kSecondsPerDay + int64_t{transition.hour} * 3600 +
           int64_t{transition.minute} * 60 + transition.second + roundUp;
}

int64_t StandardOffset(const ZoneRule& rule) {
    return (int64_t{rule.bias} + rule.standardBias) * 60;
}

int64_t DaylightOffset(const ZoneRule& rule) {
    return (int64_t{rule.bias} + rule.daylightBias) * 60;
}

// Whether the UTC moment falls in daylight time under `rule` applied to `year`. In the southern
// hemisphere daylight time spans the new year: it is the time outside standard time.
bool IsDaylightAt(int64_t utc, const ZoneRule& rule, int64_t year) {
    if (!HasDaylightTime(rule)) {
        return false;
    }
    const int64_t begins = TransitionSeconds(rule.daylightDate, year) + StandardOffset(rule);
    const int64_t ends = TransitionSeconds(rule.standardDate, year) + DaylightOffset(rule);
    return begins < ends ? begins <= utc && utc < ends : !(ends <= utc && utc < begins);
}

}  // namespace

int64_t LocalToUtcSeconds(int64_t localSeconds, const ZoneRuleForYear& ruleForYear) {
    const int64_t year = YearOf(localSeconds);
    const ZoneRule rule = ruleForYear(year);
    const int64_t asStandard = localSeconds + StandardOffset(rule);
    if (!HasDaylightTime(rule)) {
        return asStandard;
    }
    const int64_t asDaylight = localSeconds + DaylightOffset(rule);
    const bool standardFits = !IsDaylightAt(asStandard, rule, year);
    const bool daylightFits = IsDaylightAt(asDaylight, rule, year);
    if (standardFits != daylightFits) {
        return standardFits ? asStandard : asDaylight;
    }
    // Both fit: the clocks went back, take the earlier moment. Neither: the clocks jumped over
    // it, take the offset before the jump (the larger one, which gives the later moment).
    return standardFits ? std::min(asStandard, asDaylight) : std::max(asStandard, asDaylight);
}

int64_t UtcToLocalSeconds(int64_t utcSeconds, const ZoneRuleForYear& ruleForYear) {
    int64_t year = YearOf(utcSeconds);
    ZoneRule rule = ruleForYear(year);
    // Near the new year the local date may be in the next or the previous year.
    const int64_t localYear = YearOf(utcSeconds - StandardOffset(rule));
    if (localYear != year) {
        year = localYear;
        rule = ruleForYear(year);
    }
    return utcSeconds -
           (IsDaylightAt(utcSeconds, rule, year) ? DaylightOffset(rule) : StandardOffset(rule));
}

}  // namespace slib
