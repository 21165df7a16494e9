#include "core/date_time.h"

#include <gtest/gtest.h>

namespace fmhost {
namespace {

std::optional<DateTime> ParseDate(const char16_t* text) {
    return DateTime::ParseDate(text);
}

TEST(DateTimeTest, DayNumbersCountFromFirstJanuaryOfYearOne) {
    EXPECT_EQ(DateTime::FromDate(1, 1, 1).DaysSinceEpoch(), 1);
    EXPECT_EQ(DateTime::FromDate(1, 12, 31).DaysSinceEpoch(), 365);
    EXPECT_EQ(DateTime::FromDate(1970, 1, 1).DaysSinceEpoch(), 719163);
    EXPECT_EQ(DateTime::FromDate(2000, 3, 1).DaysSinceEpoch() -
                  DateTime::FromDate(2000, 2, 28).DaysSinceEpoch(),
              2);  // 2000 is a leap year
    DateTime back;
    back.SetDaysSinceEpoch(738885);
    EXPECT_EQ(back.DateText(), "12/31/2023");
}

TEST(DateTimeTest, OutOfRangePartsRollOver) {
    EXPECT_EQ(DateTime::FromDate(2020, 13, 1).DateText(), "1/1/2021");
    EXPECT_EQ(DateTime::FromDate(2020, 1, 0).DateText(), "12/31/2019");
    EXPECT_EQ(DateTime::FromDate(2020, 0, 1).DateText(), "12/1/2019");
    EXPECT_EQ(DateTime::FromDate(2019, 2, 29).DateText(), "3/1/2019");
    EXPECT_EQ(DateTime::FromDate(2020, -11, 1).DateText(), "1/1/2019");
    DateTime unchanged = DateTime::FromDate(2020, 5, 5);
    EXPECT_FALSE(unchanged.SetNormalizedDate(int64_t(1) << 50, 1, 1));
    EXPECT_EQ(unchanged.DateText(), "5/5/2020");
    EXPECT_EQ(DateTime::FromTime(1, 61, 61).TimeText(), "2:02:01");
    EXPECT_EQ(DateTime::FromTime(0, 0, -1).TimeText(), "-0:00:01");
    EXPECT_EQ(DateTime::FromTime(0, 0, 0, 1500000).TimeText(), "0:00:01.5");
}

TEST(DateTimeTest, CalendarQueries) {
    const DateTime date = DateTime::FromDate(2024, 3, 1);  // a Friday
    EXPECT_EQ(date.Year(), 2024);
    EXPECT_EQ(date.Month(), 3);
    EXPECT_EQ(date.Day(), 1);
    EXPECT_TRUE(date.IsLeapYear());
    EXPECT_EQ(date.DayOfWeek(), 6);
    EXPECT_EQ(date.DayOfYear(), 61);
    EXPECT_EQ(DateTime::FromDate(1, 1, 1).DayOfWeek(), 2);  // a Monday
    EXPECT_EQ(DateTime::FromDate(2023, 1, 1).DayOfWeek(), 1);
    EXPECT_FALSE(DateTime::FromDate(1900, 1, 1).IsLeapYear());
    EXPECT_TRUE(DateTime::FromDate(2000, 1, 1).IsLeapYear());
    // 2022 began on a Saturday, so 2 January is already in week 2.
    EXPECT_EQ(DateTime::FromDate(2022, 1, 1).WeekOfYear(), 1);
    EXPECT_EQ(DateTime::FromDate(2022, 1, 2).WeekOfYear(), 2);
    EXPECT_EQ(DateTime::FromDate(2022, 12, 31).WeekOfYear(), 53);
}

TEST(DateTimeTest, SecondsSinceEpochSplitIntoDateAndTime) {
    DateTime timestamp = DateTime::FromDate(2001, 2, 3);
    timestamp.SetNormalizedTime(4, 5, 6, 250000);
    const Decimal seconds = timestamp.SecondsSinceEpoch();
    EXPECT_EQ(seconds.ToString(), "63116769906.25");
    DateTime back;
    back.SetSecondsSinceEpoch(seconds);
    EXPECT_EQ(back, timestamp);
    EXPECT_EQ(back.TimestampText(), "2/3/2001 4:05:06.25");
    back.SetSecondsSinceEpoch(Decimal(-1));  // one second before the epoch
    EXPECT_EQ(back.DaysSinceEpoch(), 0);
    EXPECT_EQ(back.TimeText(), "23:59:59");
}

TEST(DateTimeTest, TimePartsOfDurations) {
    const DateTime long_time = DateTime::FromTime(30, 15, 7);
    EXPECT_EQ(long_time.Hour(), 30);
    EXPECT_EQ(long_time.Minute(), 15);
    EXPECT_EQ(long_time.Second(), 7);
    EXPECT_EQ(long_time.TimeText(), "30:15:07");
    DateTime negative;
    negative.SetSecondsOfTime(*Decimal::Parse(std::string_view("-5400.5")));
    EXPECT_EQ(negative.TimeText(), "-1:30:00.5");
    EXPECT_EQ(negative.Hour(), -1);
    EXPECT_EQ(negative.Minute(), 30);
    EXPECT_EQ(negative.SecondsOfTime().ToString(), "-5400.5");
}

TEST(DateTimeTest, ParsesItsOwnTextForms) {
    EXPECT_EQ(ParseDate(u"2/29/2024")->DaysSinceEpoch(),
              DateTime::FromDate(2024, 2, 29).DaysSinceEpoch());
    EXPECT_EQ(ParseDate(u" 2024-02-29 ")->DateText(), "2/29/2024");
    EXPECT_EQ(ParseDate(u"1/1/0001")->DaysSinceEpoch(), 1);
    EXPECT_FALSE(ParseDate(u"2/29/2023"));
    EXPECT_FALSE(ParseDate(u"13/1/2020"));
    EXPECT_FALSE(ParseDate(u"1/1"));
    EXPECT_FALSE(ParseDate(u"1/1/2020x"));
    EXPECT_FALSE(ParseDate(u""));

    EXPECT_EQ(DateTime::ParseTime(u"9:05")->TimeText(), "9:05:00");
    EXPECT_EQ(DateTime::ParseTime(u"12:30:15 am")->TimeText(), "0:30:15");
    EXPECT_EQ(DateTime::ParseTime(u"1:00 PM")->TimeText(), "13:00:00");
    EXPECT_EQ(DateTime::ParseTime(u"-2:00:00.125")->TimeText(), "-2:00:00.125");
    EXPECT_EQ(DateTime::ParseTime(u"100:00:00")->Hour(), 100);
    EXPECT_FALSE(DateTime::ParseTime(u"1:60"));
    EXPECT_FALSE(DateTime::ParseTime(u"13:00 PM"));
    EXPECT_FALSE(DateTime::ParseTime(u"noon"));

    EXPECT_EQ(DateTime::ParseTimestamp(u"7/4/1976 10:11:12")->TimestampText(), "7/4/1976 10:11:12");
    EXPECT_EQ(DateTime::ParseTimestamp(u"7/4/1976")->TimestampText(), "7/4/1976 0:00:00");
    EXPECT_FALSE(DateTime::ParseTimestamp(u"7/4/1976 25:00:00"));
    EXPECT_FALSE(DateTime::ParseTimestamp(u"7/4/197610:11:12"));
}

TEST(DateTimeTest, NowIsAPlausibleLocalTime) {
    const DateTime now = DateTime::Now();
    EXPECT_GE(now.Year(), 2024);
    EXPECT_LT(now.SecondsOfTime(), Decimal(DateTime::kSecondsPerDay));
    EXPECT_GE(now.SecondsOfTime(), Decimal(0));
}

}  // namespace
}  // namespace fmhost
