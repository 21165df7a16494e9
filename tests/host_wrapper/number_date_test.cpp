// Fixed-point numbers and date/times through the plug-in interface.
#include <limits>

#include "wrapper_test_support.h"

namespace {

using namespace wrapper_test;

std::u16string AsText(const FmxFixPt* number) {
    DataPtr data = NewData();
    Checked([&](FmxErr& e) { FM_Data_SetAsNumber(data.get(), *number, 2, e); });
    return DataText(*data);
}

TEST(FixPtExports, LargeAndFractionalValuesAreExact) {
    FixPtPtr n = Number(0);
    Checked([&](FmxErr& e) { FM_FixPt_AssignInt64(n.get(), 5000000000LL, e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_FixPt_AsLong64(n.get(), e); }), 5000000000LL);
    EXPECT_EQ(AsText(n.get()), u"5000000000");
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_FixPt_AsLong(n.get(), e); }),
              std::numeric_limits<int32_t>::max())
        << "saturates rather than wraps";

    Checked([&](FmxErr& e) { FM_FixPt_AssignDouble(n.get(), 0.5, e); });
    EXPECT_EQ(AsText(n.get()), u"0.5");
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_FixPt_AsFloat(n.get(), e); }), 0.5);
    Checked([&](FmxErr& e) { FM_FixPt_AssignDouble(n.get(), 0.1, e); });
    FixPtPtr sum = Number(0);
    Checked([&](FmxErr& e) { FM_FixPt_Add(n.get(), *n, *sum, e); });
    Checked([&](FmxErr& e) { FM_FixPt_Add(sum.get(), *n, *sum, e); });
    EXPECT_EQ(AsText(sum.get()), u"0.3") << "no binary rounding";
    Checked([&](FmxErr& e) { FM_FixPt_AssignDouble(n.get(), -2.75, e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_FixPt_AsLong(n.get(), e); }), -2);
}

TEST(FixPtExports, DivisionKeepsThePrecisionAndRefusesZero) {
    FixPtPtr one = Number(1);
    FixPtPtr three = Number(3);
    FixPtPtr zero = Number(0);
    FixPtPtr quotient = Number(7);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_FixPt_GetPrecision(one.get(), e); }), 16);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_FixPt_Divide(one.get(), *three, *quotient, e); }),
              0);
    EXPECT_EQ(AsText(quotient.get()), u"0.3333333333333333");
    Checked([&](FmxErr& e) { FM_FixPt_SetPrecision(one.get(), 20, e); });
    Checked([&](FmxErr& e) { FM_FixPt_Divide(one.get(), *three, *quotient, e); });
    EXPECT_EQ(AsText(quotient.get()), u"0.33333333333333333333");
    EXPECT_NE(Checked([&](FmxErr& e) { return FM_FixPt_Divide(one.get(), *zero, *quotient, e); }),
              0);
    EXPECT_EQ(AsText(quotient.get()), u"0.33333333333333333333") << "result untouched";
}

TEST(FixPtExports, ArithmeticAndComparisons) {
    FixPtPtr n = Number(10);
    Checked([&](FmxErr& e) { FM_FixPt_Increment64(n.get(), 4000000000LL, e); });
    Checked([&](FmxErr& e) { FM_FixPt_Decrement(n.get(), 20, e); });
    EXPECT_EQ(AsText(n.get()), u"3999999990");
    Checked([&](FmxErr& e) { FM_FixPt_Negate(n.get(), e); });
    FixPtPtr product = Number(0);
    FixPtPtr half = Number(0);
    Checked([&](FmxErr& e) { FM_FixPt_AssignDouble(half.get(), 0.5, e); });
    Checked([&](FmxErr& e) { FM_FixPt_Multiply(n.get(), *half, *product, e); });
    EXPECT_EQ(AsText(product.get()), u"-1999999995");
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_FixPt_operatorLT(product.get(), *half, e); }));
    EXPECT_FALSE(Checked([&](FmxErr& e) { return FM_FixPt_AsBool(Number(0).get(), e); }));
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_FixPt_AsBool(half.get(), e); }));
}

DateTimePtr NewDateTime() {
    return DateTimePtr(Checked([](FmxErr& e) { return FM_DateTime_Constructor1(e); }));
}

TEST(DateTimeExports, DatesNormaliseAndCountFromTheFirstOfJanuaryOfYearOne) {
    DateTimePtr d = NewDateTime();
    EXPECT_EQ(
        Checked([&](FmxErr& e) { return FM_DateTime_SetNormalizedDate1(d.get(), 2, 29, 2024, e); }),
        0);
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_DateTime_IsLeapYear(d.get(), e); }));
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_DayOfWeek(d.get(), e); }), 5)
        << "Thursday";
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_DayOfYear(d.get(), e); }), 60);

    FixPtPtr year = Number(2023), month = Number(13), day = Number(1);
    Checked(
        [&](FmxErr& e) { return FM_DateTime_SetNormalizedDate2(d.get(), *year, *month, *day, e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetYear(d.get(), e); }), 2024);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetMonth(d.get(), e); }), 1);

    Checked([&](FmxErr& e) { FM_DateTime_SetDaysSinceEpoch(d.get(), 1, e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetYear(d.get(), e); }), 1);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetDay(d.get(), e); }), 1);
    Checked([&](FmxErr& e) { FM_DateTime_SetNormalizedDate1(d.get(), 1, 1, 2001, e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetDaysSinceEpoch(d.get(), e); }),
              730486);
}

TEST(DateTimeExports, TimesKeepMicrosecondsAndDurations) {
    DateTimePtr t = NewDateTime();
    Checked(
        [&](FmxErr& e) { return FM_DateTime_SetNormalizedTime1(t.get(), 25, 61, 5, 250000, e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetHour(t.get(), e); }), 26);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetMinute(t.get(), e); }), 1);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetUSec(t.get(), e); }), 250000);
    FixPtPtr seconds = Number(0);
    Checked([&](FmxErr& e) { FM_DateTime_GetSecsSinceMidnight(t.get(), *seconds, e); });
    EXPECT_EQ(AsText(seconds.get()), u"93665.25");
    Checked([&](FmxErr& e) { FM_DateTime_GetSeconds(t.get(), *seconds, e); });
    EXPECT_EQ(AsText(seconds.get()), u"5.25");

    FixPtPtr hour = Number(0), zero = Number(0);
    Checked([&](FmxErr& e) { FM_FixPt_AssignDouble(hour.get(), 1.5, e); });
    Checked(
        [&](FmxErr& e) { return FM_DateTime_SetNormalizedTime2(t.get(), *hour, *zero, *zero, e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetMinute(t.get(), e); }), 30);
}

TEST(DateTimeExports, TextIsReadAsDateTimeOrTimestamp) {
    LocalePtr locale(Checked([](FmxErr& e) { return FM_Locale_Constructor1(1, e); }));
    auto parse = [&](const std::u16string& text) {
        TextPtr t = MakeText(text);
        return DateTimePtr(
            Checked([&](FmxErr& e) { return FM_DateTime_Constructor3(*t, *locale, e); }));
    };
    DateTimePtr date = parse(u"3/15/2024");
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetDay(date.get(), e); }), 15);
    DateTimePtr time = parse(u"13:45:10");
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetHour(time.get(), e); }), 13);
    DateTimePtr stamp = parse(u"3/15/2024 13:45:10");
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetMonth(stamp.get(), e); }), 3);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DateTime_GetSec(stamp.get(), e); }), 10);
    FixPtPtr epoch = Number(0);
    Checked([&](FmxErr& e) { FM_DateTime_GetSecondsSinceEpoch(stamp.get(), *epoch, e); });
    DateTimePtr back = NewDateTime();
    Checked([&](FmxErr& e) { FM_DateTime_SetSecondsSinceEpoch(back.get(), *epoch, e); });
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_DateTime_operatorEQ(back.get(), *stamp, e); }));
}

}  // namespace
