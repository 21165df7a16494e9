// Each date through the zone rule of its own year, over rules supplied as Windows keeps them.
// The expected values were computed with Python's zoneinfo (the IANA database), e.g.
//   datetime(2006, 4, 1, 12, tzinfo=ZoneInfo("America/New_York")).astimezone(timezone.utc)
// for local to UTC (fold 0: a skipped time takes the offset before the jump, a doubled time the
// first of its two moments), and .astimezone(ZoneInfo(zone)) for the way back.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "foundation/date.h"
#include "foundation/utf16_string.h"
#include "foundation/zone_rule.h"

namespace slib {
namespace {

// Day-of-week form: the `occurrence`-th Sunday (5: the last) of `month` at `hour`:`minute`.
ZoneTransition Sunday(unsigned month, unsigned occurrence, unsigned hour, unsigned minute = 0) {
    return {0, month, 0, occurrence, hour, minute, 0, 0};
}

ZoneRule NewYork(int64_t year) {
    // Until 2006 the first Sunday of April to the last of October; since 2007 the second Sunday
    // of March to the first of November.
    return year < 2007 ? ZoneRule{300, 0, -60, Sunday(10, 5, 2), Sunday(4, 1, 2)}
                       : ZoneRule{300, 0, -60, Sunday(11, 1, 2), Sunday(3, 2, 2)};
}
ZoneRule Berlin(int64_t) {
    return {-60, 0, -60, Sunday(10, 5, 3), Sunday(3, 5, 2)};
}
ZoneRule LordHowe(int64_t) {
    // Half an hour of daylight saving, in the southern summer (across the new year).
    return {-630, 0, -30, Sunday(4, 1, 2), Sunday(10, 1, 2)};
}
ZoneRule Kathmandu(int64_t) {
    return {-345, 0, 0, {}, {}};
}

int64_t Seconds(const char* text) {
    int year = 0;
    unsigned month = 0, day = 0, hour = 0, minute = 0;
    sscanf(text, "%d-%u-%u %u:%u", &year, &month, &day, &hour, &minute);
    // Days since 0001-01-01 by counting whole years and months: slow and obviously right.
    int64_t days = 0;
    for (int y = 1; y < year; ++y) {
        days += (y % 4 == 0 && y % 100 != 0) || y % 400 == 0 ? 366 : 365;
    }
    const unsigned lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (unsigned m = 1; m < month; ++m) {
        days +=
            lengths[m - 1] + (m == 2 && ((year % 4 == 0 && year % 100 != 0) || year % 400 == 0));
    }
    days += day - 1;
    return days * 86400 + hour * 3600 + minute * 60;
}

std::string Text(int64_t seconds) {
    const std::string full = Date(seconds, 0).description()->toUtf8();
    return full.substr(0, 16);  // without the seconds
}

TEST(ZoneRule, EachDateTakesTheRuleOfItsOwnYear) {
    const struct {
        ZoneRule (*zone)(int64_t);
        const char* local;
        const char* utc;
        const char* back;  // the UTC moment read as local time again
    } cases[] = {
        // New York's old rule in 2006: April 1 is still standard time, October 31 standard again.
        {NewYork, "2006-04-01 12:00", "2006-04-01 17:00", "2006-04-01 12:00"},
        {NewYork, "2006-04-02 12:00", "2006-04-02 16:00", "2006-04-02 12:00"},
        {NewYork, "2006-10-31 12:00", "2006-10-31 17:00", "2006-10-31 12:00"},
        {NewYork, "2007-03-20 12:00", "2007-03-20 16:00", "2007-03-20 12:00"},
        {NewYork, "2040-11-01 12:00", "2040-11-01 16:00", "2040-11-01 12:00"},
        // The skipped hour is taken with the offset before the jump and reads back an hour
        // later; the doubled hour is its first moment.
        {NewYork, "2021-03-14 02:30", "2021-03-14 07:30", "2021-03-14 03:30"},
        {NewYork, "2021-11-07 01:30", "2021-11-07 05:30", "2021-11-07 01:30"},
        {Berlin, "2021-03-28 02:30", "2021-03-28 01:30", "2021-03-28 03:30"},
        {Berlin, "2021-10-31 02:30", "2021-10-31 00:30", "2021-10-31 02:30"},
        {Berlin, "2021-01-01 12:00", "2021-01-01 11:00", "2021-01-01 12:00"},
        {Berlin, "2050-07-01 12:00", "2050-07-01 10:00", "2050-07-01 12:00"},
        {LordHowe, "2021-01-01 00:15", "2020-12-31 13:15", "2021-01-01 00:15"},
        {LordHowe, "2021-07-01 12:00", "2021-07-01 01:30", "2021-07-01 12:00"},
        {LordHowe, "2021-10-03 02:15", "2021-10-02 15:45", "2021-10-03 02:45"},
        {LordHowe, "2021-04-04 01:45", "2021-04-03 14:45", "2021-04-04 01:45"},
        {LordHowe, "2035-12-31 23:50", "2035-12-31 12:50", "2035-12-31 23:50"},
        {Kathmandu, "2021-01-01 00:30", "2020-12-31 18:45", "2021-01-01 00:30"},
        {Kathmandu, "2040-06-01 12:00", "2040-06-01 06:15", "2040-06-01 12:00"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.local);
        const int64_t utc = LocalToUtcSeconds(Seconds(c.local), c.zone);
        EXPECT_EQ(Text(utc), c.utc);
        EXPECT_EQ(Text(UtcToLocalSeconds(utc, c.zone)), c.back);
    }
}

TEST(ZoneRule, BothMomentsOfTheDoubledHourReadAsTheSameLocalTime) {
    const struct {
        ZoneRule (*zone)(int64_t);
        const char* utc;
        const char* local;
    } cases[] = {
        {NewYork, "2021-11-07 05:30", "2021-11-07 01:30"},
        {NewYork, "2021-11-07 06:30", "2021-11-07 01:30"},
        {NewYork, "2021-11-07 06:00", "2021-11-07 01:00"},  // the change itself: standard
        {NewYork, "2021-03-14 07:00", "2021-03-14 03:00"},
        {NewYork, "2021-03-14 06:59", "2021-03-14 01:59"},
        {LordHowe, "2021-04-03 14:45", "2021-04-04 01:45"},
        {LordHowe, "2021-04-03 15:15", "2021-04-04 01:45"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Text(UtcToLocalSeconds(Seconds(c.utc), c.zone)), c.local) << c.utc;
    }
}

TEST(ZoneRule, FixedDatesAndTheLastOccurrence) {
    // A rule for one year only, on fixed days, ending at 23:59:59.999 (as Windows writes
    // "midnight"): the saving starts on 2010-05-01 00:00 and ends at the end of 2010-08-31.
    const auto fixed = [](int64_t) {
        return ZoneRule{0, 0, -60, {2010, 8, 0, 31, 23, 59, 59, 999}, {2010, 5, 0, 1, 0, 0, 0, 0}};
    };
    EXPECT_EQ(Text(LocalToUtcSeconds(Seconds("2010-04-30 23:30"), fixed)), "2010-04-30 23:30");
    EXPECT_EQ(Text(LocalToUtcSeconds(Seconds("2010-05-01 12:00"), fixed)), "2010-05-01 11:00");
    EXPECT_EQ(Text(LocalToUtcSeconds(Seconds("2010-09-01 12:00"), fixed)), "2010-09-01 12:00");
    // A fifth Sunday that does not exist is the last one: October 2021 has five, March 2021
    // four (the 28th is the last).
    EXPECT_EQ(Text(LocalToUtcSeconds(Seconds("2021-03-28 01:59"), Berlin)), "2021-03-28 00:59");
    EXPECT_EQ(Text(LocalToUtcSeconds(Seconds("2021-03-28 03:00"), Berlin)), "2021-03-28 01:00");
    EXPECT_EQ(Text(LocalToUtcSeconds(Seconds("2021-03-21 12:00"), Berlin)), "2021-03-21 11:00");
}

}  // namespace
}  // namespace slib
