// Number, Data, Color and Font values.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "foundation/color.h"
#include "foundation/data.h"
#include "foundation/font.h"
#include "foundation/number.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace {

struct Canonical {
    const char* input;
    const char* text;
};

TEST(Number, DecimalTextIsKeptExactlyInCanonicalForm) {
    for (const Canonical& row :
         {Canonical{"5000000000", "5000000000"}, Canonical{"0.1", "0.1"},
          Canonical{"-0050.500", "-50.5"}, Canonical{".5", "0.5"}, Canonical{"7.", "7"},
          Canonical{"+3", "3"}, Canonical{"-0", "0"}, Canonical{"-0.000", "0"},
          Canonical{"000", "0"},
          Canonical{"0.12345678901234567890123", "0.12345678901234567890123"},
          Canonical{"123456789012345678901234567890", "123456789012345678901234567890"}}) {
        const std::shared_ptr<Number> number = Number::FromDecimalText(row.input);
        ASSERT_NE(number, nullptr) << row.input;
        EXPECT_EQ(number->decimalText(), row.text) << row.input;
    }
}

TEST(Number, MalformedTextIsRefused) {
    for (const char* input : {"", "-", "+", ".", "-.", "1e5", " 1", "1 ", "1.2.3", "--1", "0x10",
                              "1,5", "inf", "nan"}) {
        EXPECT_EQ(Number::FromDecimalText(input), nullptr) << '"' << input << '"';
    }
}

TEST(Number, IntegerAccessCutsTheFractionAndSaturates) {
    EXPECT_EQ(Number::FromDecimalText("5000000000")->asInt64(), 5000000000);
    EXPECT_EQ(Number::FromDecimalText("-2.9")->asInt64(), -2);
    EXPECT_EQ(Number::FromDecimalText("0.999")->asInt64(), 0);
    EXPECT_EQ(Number::FromDecimalText("-9223372036854775808")->asInt64(),
              std::numeric_limits<int64_t>::min());
    EXPECT_EQ(Number::FromDecimalText("9223372036854775808")->asInt64(),
              std::numeric_limits<int64_t>::max());
    EXPECT_EQ(Number::FromDecimalText("-99999999999999999999.5")->asInt64(),
              std::numeric_limits<int64_t>::min());
    EXPECT_TRUE(Number::FromDecimalText("12.0")->isInteger());
    EXPECT_FALSE(Number::FromDecimalText("12.5")->isInteger());
}

TEST(Number, DoubleAccess) {
    EXPECT_EQ(Number::FromDecimalText("0.5")->asDouble(), 0.5);
    EXPECT_EQ(Number::FromDecimalText("-1234.25")->asDouble(), -1234.25);
    const std::string huge = "1" + std::string(400, '0');
    EXPECT_EQ(Number::FromDecimalText(huge)->asDouble(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Number::FromDecimalText("-" + huge)->asDouble(),
              -std::numeric_limits<double>::infinity());
    const std::string tiny = "0." + std::string(400, '0') + "1";
    EXPECT_EQ(Number::FromDecimalText(tiny)->asDouble(), 0.0);
}

TEST(Number, FromIntegerCoversTheWholeRange) {
    EXPECT_EQ(Number(0).decimalText(), "0");
    EXPECT_EQ(Number(-50).decimalText(), "-50");
    EXPECT_EQ(Number(std::numeric_limits<int64_t>::min()).decimalText(), "-9223372036854775808");
    EXPECT_EQ(Number(std::numeric_limits<int64_t>::max()).asInt64(),
              std::numeric_limits<int64_t>::max());
    EXPECT_EQ(Number(5000000000).description()->units(), u"5000000000");
}

TEST(Data, HoldsBytes) {
    const unsigned char bytes[] = {0, 1, 0xFF};
    const Data data(bytes, sizeof bytes);
    ASSERT_EQ(data.size(), 3u);
    EXPECT_EQ(data.bytes()[2], 0xFF);
    EXPECT_EQ(data.description()->units(), u"3 bytes");
    EXPECT_EQ(Data(nullptr, 0).size(), 0u);
    EXPECT_EQ(Data(nullptr, 5).size(), 0u);
}

TEST(Color, ComparesAndDescribesAllFourChannelsAndFontsByName) {
    const Color color(10, 11, 12);
    EXPECT_EQ(color.alpha(), 255);
    EXPECT_EQ(color.description()->units(), u"#0A0B0CFF");
    EXPECT_NE(color, Color(10, 11, 12, 254));
    EXPECT_NE(color, Color(10, 11, 13));
    EXPECT_EQ(color, Color(10, 11, 12, 255));
    EXPECT_EQ(Font(u"Segoe UI").description()->units(), u"Segoe UI");
}

}  // namespace
}  // namespace slib
