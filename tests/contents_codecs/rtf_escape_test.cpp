// RTF written in the UTF-8 code page made plain ASCII RTF.

#include <gtest/gtest.h>

#include "foundation/rtf_escape.h"

namespace slib {
namespace {

TEST(RtfEscape, EveryNonAsciiCharacterBecomesAUnicodeEscape) {
    struct Row {
        const char* rtf;
        const char* escaped;
    };
    for (const Row& row : {
             Row{"{\\rtf1 plain \\b bold\\b0}", "{\\rtf1 plain \\b bold\\b0}"},
             Row{"caf\xC3\xA9", "caf\\u233?"}, Row{"\xCE\xA9", "\\u937?"},
             Row{"\xEF\xBF\xBD", "\\u-3?"},                   // U+FFFD: signed 16-bit
             Row{"\xF0\x9D\x84\x9E", "\\u-10188?\\u-8930?"},  // U+1D11E: a surrogate pair
             Row{"\xE9t\xC3", "\\'e9t\\'c3"},                 // not UTF-8: bytes kept as bytes
         }) {
        EXPECT_EQ(EscapeRtfNonAscii(row.rtf), row.escaped) << row.rtf;
    }
}

TEST(RtfEscape, TheUtf8OpeningBecomesTheStandardOne) {
    EXPECT_EQ(StandardRtfOpening("{\\urtf8\\ansi x}"), "{\\rtf1\\ansi x}");
    EXPECT_EQ(StandardRtfOpening("{\\urtf\\deff0 x}"), "{\\rtf1\\deff0 x}");
    EXPECT_EQ(StandardRtfOpening("{\\rtf1\\ansi x}"), "{\\rtf1\\ansi x}");
    EXPECT_EQ(StandardRtfOpening("plain {\\urtf"), "plain {\\urtf");
}

}  // namespace
}  // namespace slib
