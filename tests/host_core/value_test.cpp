#include "core/value.h"

#include <gtest/gtest.h>

namespace fmhost {
namespace {

std::string NumberOf(std::u16string text) {
    const std::optional<Decimal> n = NumberFromText(text);
    return n ? n->ToString() : "<empty>";
}

TEST(ValueTest, NumberFromTextTakesDigitsSignAndFirstPoint) {
    EXPECT_EQ(NumberOf(u"abc123def4.5.6"), "1234.56");
    EXPECT_EQ(NumberOf(u"-12"), "-12");
    EXPECT_EQ(NumberOf(u"Total: -3.50 EUR"), "-3.5");
    EXPECT_EQ(NumberOf(u"1-2"), "12");  // a minus after the first digit is ignored
    EXPECT_EQ(NumberOf(u".5"), "0.5");
    EXPECT_EQ(NumberOf(u"5000000000"), "5000000000");
    EXPECT_EQ(NumberOf(u""), "<empty>");
    EXPECT_EQ(NumberOf(u"abc"), "<empty>");
    EXPECT_EQ(NumberOf(u"-."), "<empty>");
}

TEST(ValueTest, TextOfEachType) {
    EXPECT_EQ(Value(Decimal(-50)).AsText().Chars(), u"-50");
    EXPECT_EQ(Value::Unknown().AsText().Chars(), u"?");
    EXPECT_EQ(Value::FromBoolean(true).AsText().Chars(), u"1");
    EXPECT_EQ(Value::FromDate(DateTime::FromDate(2020, 1, 2)).AsText().Chars(), u"1/2/2020");
    EXPECT_EQ(Value::FromTime(DateTime::FromTime(1, 2, 3)).AsText().Chars(), u"1:02:03");
    DateTime ts = DateTime::FromDate(2020, 1, 2);
    ts.SetNormalizedTime(13, 0, 0);
    EXPECT_EQ(Value::FromTimestamp(ts).AsText().Chars(), u"1/2/2020 13:00:00");
    Container file;
    file.AddFileName(Text(u"report.pdf"));
    EXPECT_EQ(Value(file).AsText().Chars(), u"report.pdf");
    EXPECT_EQ(Value().AsText().Chars(), u"");
}

TEST(ValueTest, NumbersOfEachType) {
    EXPECT_EQ(Value::FromDate(DateTime::FromDate(1, 1, 2)).AsNumber().ToString(), "2");
    EXPECT_EQ(Value::FromTime(DateTime::FromTime(1, 0, 0, 500000)).AsNumber().ToString(), "3600.5");
    DateTime ts = DateTime::FromDate(1, 1, 2);
    ts.SetNormalizedTime(0, 0, 1);
    EXPECT_EQ(Value::FromTimestamp(ts).AsNumber().ToString(), "86401");
    EXPECT_EQ(Value::FromBoolean(false).AsNumber().ToString(), "0");
    EXPECT_FALSE(Value::Empty(NativeType::kNumber).NumberIfAny());
    EXPECT_EQ(Value::Empty(NativeType::kNumber).AsNumber().ToString(), "0");
}

TEST(ValueTest, BooleanIsNumberNotZero) {
    EXPECT_TRUE(Value::FromText(u"x1").AsBoolean());
    EXPECT_FALSE(Value::FromText(u"0.0").AsBoolean());
    EXPECT_FALSE(Value::FromText(u"yes").AsBoolean());  // no digits: empty
    EXPECT_FALSE(Value::FromText(u"").AsBoolean());
    EXPECT_TRUE(Value(Decimal(-1)).AsBoolean());
    EXPECT_FALSE(Value::Unknown().AsBoolean());
}

TEST(ValueTest, EmptinessAndValidity) {
    EXPECT_TRUE(Value().IsEmpty());
    EXPECT_FALSE(Value().IsValid());
    EXPECT_TRUE(Value::FromText(u"").IsEmpty());
    EXPECT_FALSE(Value(Decimal(0)).IsEmpty());
    EXPECT_TRUE(Value::Empty(NativeType::kDate).IsEmpty());
    EXPECT_TRUE(Value(Container()).IsEmpty());
    EXPECT_FALSE(Value::Unknown().IsEmpty());
    EXPECT_FALSE(Value::Unknown().IsValid());
}

TEST(ValueTest, DatesAndTimesFromOtherTypes) {
    EXPECT_EQ(Value::FromText(u"3/4/2021").AsDate().DateText(), "3/4/2021");
    EXPECT_EQ(Value::FromText(u"3/4/2021 10:00").AsDate().DateText(), "3/4/2021");
    EXPECT_EQ(Value::FromText(u"3/4/2021 10:00").AsTime().TimeText(), "10:00:00");
    EXPECT_FALSE(Value::FromText(u"soon").DateIfAny());
    EXPECT_EQ(Value(Decimal(2)).AsDate().DateText(), "1/2/0001");
    EXPECT_EQ(Value(Decimal(90)).AsTime().TimeText(), "0:01:30");
    EXPECT_EQ(Value(Decimal(86400)).AsTimestamp().TimestampText(), "1/2/0001 0:00:00");
    EXPECT_FALSE(Value::FromDate(DateTime::FromDate(2020, 1, 1)).TimeIfAny());
    EXPECT_EQ(Value::FromDate(DateTime::FromDate(2020, 1, 1)).AsTimestamp().TimestampText(),
              "1/1/2020 0:00:00");
    EXPECT_EQ(Value::FromTime(DateTime::FromTime(5, 0, 0)).AsTimestamp().TimestampText(),
              "1/1/0001 5:00:00");
}

TEST(ValueTest, ConvertKeepsLocaleAndFollowsTheRules) {
    Value v = Value::FromText(u"12.50 kg");
    v.SetLocale(21);
    v.ConvertTo(NativeType::kNumber);
    EXPECT_EQ(v.Type(), NativeType::kNumber);
    EXPECT_EQ(v.AsText().Chars(), u"12.5");
    EXPECT_EQ(v.Locale(), 21);
    v.ConvertTo(NativeType::kBoolean);
    EXPECT_EQ(v.Type(), NativeType::kBoolean);
    EXPECT_TRUE(v.AsBoolean());
    Value none = Value::FromText(u"abc");
    none.ConvertTo(NativeType::kDate);
    EXPECT_EQ(none.Type(), NativeType::kDate);
    EXPECT_TRUE(none.IsEmpty());
    v.Clear(NativeType::kText);
    EXPECT_TRUE(v.IsEmpty());
    EXPECT_EQ(v.Locale(), 21);
}

TEST(ValueTest, SetFromTextRefusesTextOfTheWrongKind) {
    Value v(Decimal(7));
    EXPECT_FALSE(v.SetFromText(Text(u"abc"), NativeType::kNumber));
    EXPECT_EQ(v.AsText().Chars(), u"7");  // unchanged
    EXPECT_FALSE(v.SetFromText(Text(u"2/30/2020"), NativeType::kDate));
    EXPECT_FALSE(v.SetFromText(Text(u"x"), NativeType::kContainer));
    EXPECT_TRUE(v.SetFromText(Text(u"2/28/2020"), NativeType::kDate));
    EXPECT_EQ(v.Type(), NativeType::kDate);
    EXPECT_TRUE(v.SetFromText(Text(u""), NativeType::kTime));
    EXPECT_EQ(v.Type(), NativeType::kTime);
    EXPECT_TRUE(v.IsEmpty());
    Text styled(u"x");
    CharacterStyle bold;
    bold.EnableFace(face::kBold);
    styled.SetStyle(bold);
    EXPECT_TRUE(v.SetFromText(styled, NativeType::kText));
    EXPECT_TRUE(v.AsText().HasStyles());
}

}  // namespace
}  // namespace fmhost
