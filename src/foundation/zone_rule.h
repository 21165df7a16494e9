#pragma once
// Local wall-clock time and UTC through a time zone's rule for one year, in the form Windows keeps
// it (TIME_ZONE_INFORMATION): a base bias, a standard and a daylight bias, and the two yearly
// transitions. Each date is converted with the rule of its own year, so 2006 in New York keeps
// the April-to-October saving of that year. Portable, so the rule arithmetic is tested natively
// against supplied rules.
//
// Wall-clock times that do not exist (the hour skipped when the clocks go forward) are taken
// with the offset in force before the jump, so they read back an hour (or the zone's saving)
// later; wall-clock times that occur twice (when the clocks go back) are the earlier of the two
// moments.

#include <cstdint>
#include <functional>

namespace slib {

// When a transition happens, as the wall clock before it shows it.
struct ZoneTransition {
    unsigned year = 0;       // 0: every year (the day-of-week form); else only this fixed date
    unsigned month = 0;      // 1 to 12; 0 in either transition: the zone has no daylight time
    unsigned dayOfWeek = 0;  // 0 Sunday to 6 Saturday (day-of-week form)
    unsigned day = 0;        // the occurrence of dayOfWeek, 1 to 5 (5: the last); or the day
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
    unsigned milliseconds = 0;
};

// Biases in minutes, UTC = local + bias + (standardBias or daylightBias).
struct ZoneRule {
    int32_t bias = 0;
    int32_t standardBias = 0;
    int32_t daylightBias = 0;
    ZoneTransition standardDate;  // back to standard time
    ZoneTransition daylightDate;  // on to daylight time
};

// The rule in force in a calendar year.
using ZoneRuleForYear = std::function<ZoneRule(int64_t year)>;

// Seconds are those of slib::Date (since 0001-01-01 00:00:00, proleptic Gregorian).
int64_t LocalToUtcSeconds(int64_t localSeconds, const ZoneRuleForYear& ruleForYear);
int64_t UtcToLocalSeconds(int64_t utcSeconds, const ZoneRuleForYear& ruleForYear);

}  // namespace slib
