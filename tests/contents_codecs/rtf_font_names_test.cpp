// Font names with Unicode escapes swapped for ASCII placeholders before a rich-edit reader sees
// them, and everything else left as it was.
#include <gtest/gtest.h>

#include "foundation/rtf_font_names.h"
#include "foundation/utf_conversion.h"

namespace {

using slib::ReplaceUnicodeFontNames;

TEST(RtfFontNames, NamesWithUnicodeEscapesBecomePlaceholders) {
    const std::string rtf =
        "{\\rtf1{\\fonttbl{\\f0\\fcharset0 \\u-211?\\u-205? \\u12468?\\u12471?;}"
        "{\\f1\\fcharset0 Arial;}{\\f2\\fnil\\fcharset0 \\u256?rial \\u362?nicode;}}"
        "\\f0 abc\\f2 \\u363?nicode}";
    const slib::PlaceholderFontNames swapped = ReplaceUnicodeFontNames(rtf);
    EXPECT_EQ(swapped.rtf,
              "{\\rtf1{\\fonttbl{\\f0\\fcharset0 VantafileFont0;}{\\f1\\fcharset0 Arial;}"
              "{\\f2\\fnil\\fcharset0 VantafileFont1;}}\\f0 abc\\f2 \\u363?nicode}");
    ASSERT_EQ(swapped.names.size(), 2u);
    EXPECT_EQ(swapped.names[0].first, u"VantafileFont0");
    EXPECT_EQ(swapped.names[0].second, u"\uFF2D\uFF33 \u30B4\u30B7");
    EXPECT_EQ(swapped.names[1].second, u"\u0100rial \u016Anicode");
}

TEST(RtfFontNames, FallbacksNestedGroupsAndForeignNamesAreHandled) {
    struct Row {
        const char* rtf;
        const char16_t* name;  // nullptr: nothing swapped, the text unchanged
    };
    for (const Row& row : {
             // "\uc2" makes two fallback characters follow, "\'hh" counting as one.
             Row{"{\\fonttbl{\\f0\\uc2 \\u1055\\'cf?x;}}", u"\u041Fx"},
             Row{"{\\fonttbl{\\f0{\\*\\panose 0203}\\u937?mega;}}", u"\u03A9mega"},
             Row{"{\\fonttbl{\\f0\\u937?mega}}", u"\u03A9mega"},  // no ";"
             // Bytes in the font's code page are the reader's to decode.
             Row{"{\\fonttbl{\\f0\\fcharset128 \\'82\\'6c\\u937?;}}", nullptr},
             Row{"{\\fonttbl{\\f0\\fcharset204 \xCF\\u937?;}}", nullptr},
             Row{"{\\fonttbl{\\f0 Arial;}}", nullptr},
             Row{"{\\rtf1 no table \\u937?}", nullptr},
             Row{"{\\fonttbl{\\f0 \\u9", u"\t"},  // cut short: nothing read beyond the end
             Row{"{\\fonttbl{", nullptr},
             Row{"", nullptr},
         }) {
        const slib::PlaceholderFontNames swapped = ReplaceUnicodeFontNames(row.rtf);
        if (row.name == nullptr) {
            EXPECT_TRUE(swapped.names.empty()) << row.rtf;
            EXPECT_EQ(swapped.rtf, row.rtf);
        } else {
            ASSERT_EQ(swapped.names.size(), 1u) << row.rtf;
            EXPECT_EQ(swapped.names[0].second, row.name) << row.rtf;
            EXPECT_NE(swapped.rtf.find("VantafileFont0"), std::string::npos) << swapped.rtf;
        }
    }
}

}  // namespace
