#include "core/decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace fmhost {
namespace {

Decimal D(const char* text) {
    return *Decimal::Parse(std::string_view(text));
}

TEST(DecimalTest, PrintsLikeTheHost) {
    EXPECT_EQ(Decimal(-50).ToString(), "-50");
    EXPECT_EQ(Decimal(5000000000LL).ToString(), "5000000000");
    EXPECT_EQ(Decimal(0).ToString(), "0");
    EXPECT_EQ(D("0.5").ToString(), "0.5");
    EXPECT_EQ(D("-0.05").ToString(), "-0.05");
    EXPECT_EQ(D("3.000").ToString(), "3");
    EXPECT_EQ(D("0012.3400").ToString(), "12.34");
    EXPECT_EQ(D("-0").ToString(), "0");
    EXPECT_EQ(D(".5").ToString(), "0.5");
    EXPECT_EQ(D("5.").ToString(), "5");
}

TEST(DecimalTest, ParseRejectsWhatIsNoPlainNumber) {
    EXPECT_FALSE(Decimal::Parse(std::string_view("")));
    EXPECT_FALSE(Decimal::Parse(std::string_view("-")));
    EXPECT_FALSE(Decimal::Parse(std::string_view(".")));
    EXPECT_FALSE(Decimal::Parse(std::string_view("1.2.3")));
    EXPECT_FALSE(Decimal::Parse(std::string_view("1e3")));
    EXPECT_FALSE(Decimal::Parse(std::u16string_view(u"1\u0661")));  // Arabic-Indic digit
}

TEST(DecimalTest, IntegersRoundTripExactly) {
    for (int64_t v : {int64_t(0), int64_t(1), int64_t(-1), int64_t(5000000000LL),
                      std::numeric_limits<int64_t>::max(), std::numeric_limits<int64_t>::min()}) {
        EXPECT_EQ(Decimal(v).ToInt64(), v) << v;
        EXPECT_EQ(D(Decimal(v).ToString().c_str()).ToInt64(), v) << v;
    }
}

TEST(DecimalTest, ToInt64TruncatesAndSaturates) {
    EXPECT_EQ(D("2.9").ToInt64(), 2);
    EXPECT_EQ(D("-2.9").ToInt64(), -2);
    EXPECT_EQ(D("99999999999999999999999").ToInt64(), std::numeric_limits<int64_t>::max());
    EXPECT_EQ(D("-99999999999999999999999").ToInt64(), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(Decimal::Invalid().ToInt64(), 0);
}

TEST(DecimalTest, ArithmeticIsExact) {
    EXPECT_EQ((D("0.1") + D("0.2")).ToString(), "0.3");
    EXPECT_EQ((D("0.3") - D("0.1")).ToString(), "0.2");
    EXPECT_EQ((D("1.5") - D("2.25")).ToString(), "-0.75");
    EXPECT_EQ((D("-1.5") + D("1.5")).ToString(), "0");
    EXPECT_EQ((D("1.1") * D("1.1")).ToString(), "1.21");
    EXPECT_EQ((D("-0.5") * D("4")).ToString(), "-2");
    EXPECT_EQ((D("123456789012345678901234567890") * D("10")).ToString(),
              "1234567890123456789012345678900");
    EXPECT_EQ((-D("7")).ToString(), "-7");
    EXPECT_EQ((-Decimal(0)).ToString(), "0");
}

TEST(DecimalTest, DivisionKeepsPrecisionDigitsRounded) {
    EXPECT_EQ((Decimal(1) / Decimal(2)).ToString(), "0.5");
    EXPECT_EQ((Decimal(1) / Decimal(3)).ToString(), "0.3333333333333333");
    EXPECT_EQ((Decimal(2) / Decimal(3)).ToString(), "0.6666666666666667");
    EXPECT_EQ((Decimal(-2) / Decimal(3)).ToString(), "-0.6666666666666667");
    EXPECT_EQ((Decimal(10) / D("0.25")).ToString(), "40");
    EXPECT_EQ((D("0.001") / Decimal(8)).ToString(), "0.000125");
    Decimal precise(1, 20);
    EXPECT_EQ((precise / Decimal(3)).ToString(), "0.33333333333333333333");
}

TEST(DecimalTest, PrecisionIsClampedToTheHostRange) {
    Decimal n(1, 2);
    EXPECT_EQ(n.Precision(), Decimal::kMinPrecision);
    n.SetPrecision(100000);
    EXPECT_EQ(n.Precision(), Decimal::kMaxPrecision);
}

TEST(DecimalTest, FailuresGiveAnInvalidNumberThatPropagates) {
    const Decimal bad = Decimal(1) / Decimal(0);
    EXPECT_FALSE(bad.IsValid());
    EXPECT_EQ(bad.ToString(), "?");
    EXPECT_FALSE((bad + Decimal(1)).IsValid());
    EXPECT_FALSE((Decimal(2) * bad).IsValid());
    EXPECT_TRUE(std::isnan(bad.ToDouble()));
    EXPECT_LT(bad, Decimal(-1000));
    EXPECT_FALSE(Decimal::FromDouble(std::numeric_limits<double>::infinity()).IsValid());
    // Beyond 400 integer digits.
    EXPECT_FALSE(Decimal(10).Power(Decimal(400)).IsValid());
    EXPECT_TRUE(Decimal(10).Power(Decimal(399)).IsValid());
}

TEST(DecimalTest, DoublesBecomeTheirShortestDecimal) {
    EXPECT_EQ(Decimal::FromDouble(0.1).ToString(), "0.1");
    EXPECT_EQ(Decimal::FromDouble(-2.5e-7).ToString(), "-0.00000025");
    EXPECT_EQ(Decimal::FromDouble(1e20).ToString(), "100000000000000000000");
    EXPECT_EQ(Decimal::FromDouble(0.0).ToString(), "0");
    EXPECT_DOUBLE_EQ(D("0.1").ToDouble(), 0.1);
    EXPECT_DOUBLE_EQ(D("-12345.678").ToDouble(), -12345.678);
}

TEST(DecimalTest, ComparesAcrossScalesAndSigns) {
    EXPECT_EQ(D("1.50"), D("1.5"));
    EXPECT_LT(D("-2"), D("-1.5"));
    EXPECT_LT(D("0.09"), D("0.1"));
    EXPECT_GT(D("10"), D("9.999"));
    EXPECT_EQ(Decimal::Invalid(), Decimal::Invalid());
}

TEST(DecimalTest, RoundingHelpers) {
    EXPECT_EQ(D("2.5").Rounded(0).ToString(), "3");
    EXPECT_EQ(D("-2.5").Rounded(0).ToString(), "-3");
    EXPECT_EQ(D("1.2345").Rounded(2).ToString(), "1.23");
    EXPECT_EQ(D("1234").Rounded(-2).ToString(), "1200");
    EXPECT_EQ(D("0.004").Rounded(-1).ToString(), "0");
    EXPECT_EQ(D("-2.5").Truncated().ToString(), "-2");
    EXPECT_EQ(D("-2.5").Floor().ToString(), "-3");
    EXPECT_EQ(D("2.5").Floor().ToString(), "2");
}

TEST(DecimalTest, Powers) {
    EXPECT_EQ(Decimal(2).Power(Decimal(10)).ToString(), "1024");
    EXPECT_EQ(D("0.5").Power(Decimal(2)).ToString(), "0.25");
    EXPECT_EQ(Decimal(2).Power(Decimal(-2)).ToString(), "0.25");
    EXPECT_EQ(Decimal(7).Power(Decimal(0)).ToString(), "1");
    EXPECT_EQ(Decimal(9).Power(D("0.5")).ToString(), "3");
    EXPECT_FALSE(Decimal(0).Power(Decimal(-1)).IsValid());
    EXPECT_FALSE(Decimal(-8).Power(D("0.5")).IsValid());
}

}  // namespace
}  // namespace fmhost
