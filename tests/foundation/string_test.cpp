// Text values: UTF conversions, self-description, styled text.

#include <gtest/gtest.h>

#include <string>

#include "foundation/attributed_string.h"
#include "foundation/utf16_string.h"
#include "foundation/utf_conversion.h"

namespace slib {
namespace {

TEST(UtfConversion, RoundTripsEveryPlane) {
    const std::string utf8 = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z";  // a é € 😀 z
    const std::u16string utf16 = u"a\u00E9\u20AC\U0001F600z";
    EXPECT_EQ(Utf8ToUtf16(utf8), utf16);
    EXPECT_EQ(Utf16ToUtf8(utf16), utf8);
    EXPECT_EQ(Utf8ToUtf16(""), u"");
    EXPECT_EQ(Utf16ToUtf8(u""), "");
    EXPECT_EQ(Utf8ToUtf16(std::string("a\0b", 3)), std::u16string(u"a\0b", 3));
}

TEST(UtfConversion, MalformedUtf8BecomesReplacementCharacters) {
    EXPECT_EQ(Utf8ToUtf16("\x80"), u"\uFFFD");  // stray continuation byte
    EXPECT_EQ(Utf8ToUtf16("\xFF"
                          "a"),
              u"\uFFFDa");                          // impossible lead byte
    EXPECT_EQ(Utf8ToUtf16("\xE2\x82"), u"\uFFFD");  // truncated at the end
    EXPECT_EQ(Utf8ToUtf16("\xE2\x82"
                          "A"),
              u"\uFFFDA");                                  // truncated, next char kept
    EXPECT_EQ(Utf8ToUtf16("\xC0\xAF"), u"\uFFFD");          // overlong "/"
    EXPECT_EQ(Utf8ToUtf16("\xED\xA0\x80"), u"\uFFFD");      // encoded surrogate
    EXPECT_EQ(Utf8ToUtf16("\xF4\x90\x80\x80"), u"\uFFFD");  // beyond U+10FFFF
}

TEST(UtfConversion, UnpairedSurrogatesBecomeReplacementCharacters) {
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xD83D))), replacement);
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xDE00))), replacement);
    EXPECT_EQ(Utf16ToUtf8(std::u16string{char16_t(0xD83D), u'x'}), replacement + "x");
    EXPECT_EQ(Utf16ToUtf8(std::u16string{char16_t(0xDE00), char16_t(0xD83D)}),
              replacement + replacement);
}

TEST(String, ConvertsFromAndToUtf8) {
    const std::shared_ptr<String> text = String::FromUtf8(
        "Gr\xC3\xBC\xC3\x9F"
        "e");
    EXPECT_EQ(text->units(), u"Grüße");
    EXPECT_EQ(text->size(), 5u);
    EXPECT_EQ(text->toUtf8(),
              "Gr\xC3\xBC\xC3\x9F"
              "e");
    EXPECT_TRUE(String().empty());
}

TEST(String, DescribesItselfWithoutCopyingWhenShared) {
    const std::shared_ptr<String> shared = std::make_shared<String>(u"C:\\Data");
    EXPECT_EQ(shared->description(), shared);

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
    // Still a string: it describes itself as one.
    EXPECT_EQ(styled->description(), styled);
}

TEST(AttributedString, EmptyTextHasNoAttributes) {
    const AttributedString empty;
    EXPECT_TRUE(empty.empty());
    EXPECT_TRUE(empty.attributes().empty());
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
