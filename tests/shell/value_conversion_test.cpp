// Host values to foundation values, against the emulated host's own values.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <typeinfo>

#include "foundation/date.h"
#include "foundation/number.h"
#include "host_test_support.h"
#include "shell/host_data.h"
#include "shell/value_conversion.h"

namespace {

using shelltest::HostFixture;

// The value as the foundation class T; a mismatch ends the test as failed.
template <typename T>
std::shared_ptr<T> As(const std::shared_ptr<slib::Object>& object) {
    auto value = std::dynamic_pointer_cast<T>(object);
    if (value == nullptr) {
        throw std::runtime_error(std::string("not a ") + typeid(T).name());
    }
    return value;
}

class ValueConversion : public ::testing::Test {
  protected:
    std::shared_ptr<slib::Object> Convert(const std::string& calculation, bool withEnv = false) {
        values_.push_back(host_.Value(calculation));
        return fmlib::ToFoundationValue(*values_.back(), withEnv ? &host_.env() : nullptr);
    }

    HostFixture host_;
    std::vector<fmlib::DataPtr> values_;
};

TEST_F(ValueConversion, NumbersKeepEveryDigit) {
    EXPECT_EQ(As<slib::Number>(Convert("12.50"))->decimalText(), "12.5");
    EXPECT_EQ(As<slib::Number>(Convert("-3"))->decimalText(), "-3");
    EXPECT_EQ(As<slib::Number>(Convert("5000000000 * 3"))->decimalText(), "15000000000");
    EXPECT_EQ(As<slib::Number>(Convert("1 / 8"))->decimalText(), "0.125");
}

TEST_F(ValueConversion, OnlyATimestampBecomesADate) {
    auto date =
        As<slib::Date>(Convert("Timestamp ( Date ( 2 ; 29 ; 2024 ) ; Time ( 13 ; 45 ; 30 ) )"));
    EXPECT_EQ(date->description()->toUtf8(), "2024-02-29 13:45:30");
    auto first = As<slib::Date>(Convert("Timestamp ( Date ( 1 ; 1 ; 1 ) ; Time ( 0 ; 0 ; 0 ) )"));
    EXPECT_EQ(first->seconds(), 0);

    // A date or a time alone arrives as the host's text of it.
    const std::string dateText = host_.Print("Date ( 1 ; 2 ; 2020 )");
    auto date2 = As<slib::AttributedString>(Convert("Date ( 1 ; 2 ; 2020 )"));
    EXPECT_EQ(date2->toUtf8(), dateText);
    As<slib::AttributedString>(Convert("Time ( 1 ; 2 ; 3 )"));
}

TEST_F(ValueConversion, TextKeepsItsUnitsAndTheStyleAtPositionZero) {
    auto plain = As<slib::AttributedString>(Convert("\"\""));
    EXPECT_TRUE(plain->empty());
    EXPECT_TRUE(plain->attributes().empty());

    // A character outside the basic plane arrives as its two UTF-16 units.
    auto unicode = As<slib::AttributedString>(Convert("\"a\u00e9\U0001F600\""));
    EXPECT_EQ(unicode->units(), u"a\u00e9\U0001F600");

    auto styled = As<slib::AttributedString>(Convert(
        "TextStyleAdd ( TextColor ( TextSize ( \"abc\" ; 14 ) ; RGB ( 255 ; 0 ; 0 ) ) ; Bold )"));
    EXPECT_EQ(styled->units(), u"abc");
    ASSERT_TRUE(styled->attributes().size.has_value());
    EXPECT_EQ(*styled->attributes().size, 14);
    ASSERT_NE(styled->attributes().color, nullptr);
    EXPECT_EQ(*styled->attributes().color, slib::Color(255, 0, 0));
    ASSERT_TRUE(styled->attributes().face.has_value());
    EXPECT_EQ(*styled->attributes().face, 0x0100);
    EXPECT_EQ(styled->attributes().font, nullptr) << "no environment, no font name";

    // Styles after position 0 are not read.
    auto later = As<slib::AttributedString>(Convert("\"a\" & TextSize ( \"bc\" ; 30 )"));
    EXPECT_EQ(later->units(), u"abc");
    EXPECT_TRUE(later->attributes().empty());
}

TEST_F(ValueConversion, FontIdsBecomeNamesWithAnEnvironment) {
    auto styled = As<slib::AttributedString>(Convert("TextFont ( \"abc\" ; \"Arial\" )", true));
    ASSERT_NE(styled->attributes().font, nullptr);
    EXPECT_EQ(styled->attributes().font->name(), u"Arial");
}

TEST_F(ValueConversion, ContainersKeepTheirStreamsAndFileName) {
    auto container =
        As<fmlib::ContainerValue>(Convert("Base64Decode ( \"SGVsbG8=\" ; \"hello.txt\" )"));
    EXPECT_EQ(container->fileName(), u"hello.txt");
    EXPECT_FALSE(container->pictureSize().has_value());
    ASSERT_EQ(container->streams().size(), 1u) << container->description()->toUtf8();
    const fmlib::ContainerValue::Stream* file = container->findStream("FILE");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(std::string(file->data->bytes().begin(), file->data->bytes().end()), "Hello");
}

}  // namespace
