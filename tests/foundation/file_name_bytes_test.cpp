// Linux file names as bytes and as our UTF-16 text: every byte string survives the trip.

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "foundation/file_name_bytes.h"

namespace slib {
namespace {

TEST(FileNameBytes, AnyByteStringComesBackTheSame) {
    const std::string names[] = {
        "",
        "plain.txt",
        "caf\xC3\xA9",           // é
        "\xF0\x9F\x98\x80.png",  // outside the basic plane: a surrogate pair
        "latin1-\xE9t\xE9",      // not UTF-8: each byte escaped
        "\xC3",                  // a sequence cut short at the end
        "\xC0\xAF",              // overlong "/"
        "\xED\xA0\x80",          // an encoded surrogate
        "\xF4\x90\x80\x80",      // past U+10FFFF
        "\xE2\x82",              // cut short before a plain byte...
        "\xE2\x82x",             // ...and before one
        "\xFF\xFE\x80",
    };
    for (const std::string& name : names) {
        const std::u16string text = FileNameBytesToText(name);
        const std::optional<std::string> back = TextToFileNameBytes(text);
        ASSERT_TRUE(back.has_value()) << name;
        EXPECT_EQ(*back, name);
    }
}

TEST(FileNameBytes, ValidTextIsItselfAndBadBytesAreEscapedOneEach) {
    EXPECT_EQ(FileNameBytesToText("caf\xC3\xA9"), u"caf\u00E9");
    EXPECT_EQ(FileNameBytesToText("\xF0\x9F\x98\x80"), u"\U0001F600");
    EXPECT_EQ(FileNameBytesToText("a\xE9z"), u"a\xDCE9z");
    EXPECT_EQ(FileNameBytesToText("\xE2\x82x"), u"\xDCE2\xDC82x");
}

TEST(FileNameBytes, TextNoNameCanHoldIsRefused) {
    const std::u16string refused[] = {
        std::u16string(u"a\0b", 3),  // NUL ends a name early
        u"\xD800",                   // lone high surrogate
        u"x\xDC7F",                  // low surrogate standing for no byte
        u"\xDE00y",
    };
    for (const std::u16string& text : refused) {
        EXPECT_FALSE(TextToFileNameBytes(text).has_value());
    }
    EXPECT_EQ(TextToFileNameBytes(u"\U0001F600\xDCE9"), std::string("\xF0\x9F\x98\x80\xE9"));
}

}  // namespace
}  // namespace slib
