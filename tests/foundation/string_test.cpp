// Text values: UTF conversions, self-description, styled text.

#include <gtest/gtest.h>

#include <string>

#include "foundation/attributed_string.h"
#include "foundation/utf16_string.h"
#include "foundation/utf_conversion.h"

namespace slib {
namespace {

TEST(UtfConversion, RoundTripsEveryPlane) {
    const std::pair<std::string, std::u16string> rows[] = {
        {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z", u"a\u00E9\u20AC\U0001F600z"},  // a é € 😀 z
        {"", u""},
        {std::string("a\0b", 3), std::u16string(u"a\0b", 3)}};
    for (const auto& [utf8, utf16] : rows) {
        EXPECT_EQ(Utf8ToUtf16(utf8), utf16);
        EXPECT_EQ(Utf16ToUtf8(utf16), utf8);
    }
}

TEST(UtfConversion, MalformedInputBecomesReplacementCharacters) {
    const std::pair<const char*, const char16_t*> utf8[] = {
        {"\x80", u"\uFFFD"},               // stray continuation byte
        {"\xFF\x61", u"\uFFFDa"},          // impossible lead byte
        {"\xE2\x82", u"\uFFFD"},           // truncated at the end
        {"\xE2\x82\x41", u"\uFFFDA"},      // truncated, next char kept
        {"\xC0\xAF", u"\uFFFD"},           // overlong "/"
        {"\xED\xA0\x80", u"\uFFFD"},       // encoded surrogate
        {"\xF4\x90\x80\x80", u"\uFFFD"}};  // beyond U+10FFFF
    for (const auto& [input, expected] : utf8) {
        EXPECT_EQ(Utf8ToUtf16(input), expected);
    }
    const std::string replacement = "\xEF\xBF\xBD";
    const std::pair<std::u16string, std::string> utf16[] = {
        {std::u16string(1, char16_t(0xD83D)), replacement},
        {std::u16string(1, char16_t(0xDE00)), replacement},
        {std::u16string{char16_t(0xD83D), u'x'}, replacement + "x"},
        {std::u16string{char16_t(0xDE00), char16_t(0xD83D)}, replacement + replacement}};
    for (const auto& [input, expected] : utf16) {
        EXPECT_EQ(Utf16ToUtf8(input), expected);
    }
}

TEST(String, ConvertsAndDescribesItselfWithoutCopyingWhenShared) {
    const std::shared_ptr<String> text = String::FromUtf8("Gr\xC3\xBC\xC3\x9F\x65");
    EXPECT_EQ(text->units(), u"Grüße");
    EXPECT_EQ(text->size(), 5u);
    EXPECT_EQ(text->toUtf8(), "Gr\xC3\xBC\xC3\x9F\x65");
    EXPECT_TRUE(String().empty());
    EXPECT_EQ(text->description(), text);

    const String onStack(u"loose");
    const std::shared_ptr<const String> copy = onStack.description();
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy.get(), &onStack);
    EXPECT_EQ(copy->units(), u"loose");
}

TEST(AttributedString, HoldsTextAndOptionalTraits) {
    const AttributedString plain(u"plain");
    EXPECT_TRUE(plain.attributes().empty());
    EXPECT_EQ(plain.units(), u"plain");
    EXPECT_TRUE(AttributedString().empty());
    EXPECT_TRUE(AttributedString().attributes().empty());

    TextAttributes attributes;
    attributes.size = 12;
    EXPECT_FALSE(attributes.empty());
    attributes.font = std::make_shared<Font>(u"Arial");
    attributes.color = std::make_shared<Color>(255, 0, 0);
    attributes.face = 0x0100;
    const auto styled = std::make_shared<AttributedString>(u"styled", attributes);
    EXPECT_EQ(styled->attributes().font->name(), u"Arial");
    EXPECT_EQ(*styled->attributes().size, 12);
    EXPECT_EQ(*styled->attributes().color, Color(255, 0, 0, 255));
    EXPECT_EQ(*styled->attributes().face, 0x0100);
    EXPECT_EQ(styled->description(), styled) << "still a string that describes itself as one";
}

#ifdef _WIN32
TEST(String, ExchangesWideTextWithTheSystem) {
    const std::shared_ptr<String> text = String::FromWide(L"C:\\D\u00E9j\u00E0");
    EXPECT_EQ(text->units(), u"C:\\Déjà");
    EXPECT_STREQ(text->wide(), L"C:\\D\u00E9j\u00E0");
    EXPECT_EQ(String::FromWide(L"abc", 2)->units(), u"ab");
    EXPECT_TRUE(String::FromWide(nullptr)->empty());
}
#endif

}  // namespace
}  // namespace slib
