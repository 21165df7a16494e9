// RTF from anywhere read into text and formats: escapes, fallbacks, code pages, destinations,
// and malformed input that must neither crash nor lose the text around it.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "foundation/rtf_reader.h"
#include "foundation/rtf_writer.h"
#include "rich_text_description.h"

namespace {

using rich_text_test::Describe;
using slib::ReadRtf;

// 1252 as Latin-1, the Cyrillic letters of 1251, one Shift-JIS pair; any other page shows itself
// and its bytes, so a test sees which page was chosen and how the bytes were grouped.
std::u16string FakeDecode(uint32_t page, std::string_view bytes) {
    std::u16string out;
    for (size_t index = 0; index < bytes.size(); ++index) {
        const auto byte = static_cast<uint8_t>(bytes[index]);
        if (page == 1252) {
            out += static_cast<char16_t>(byte);
        } else if (page == 1251 && byte >= 0xC0) {
            out += static_cast<char16_t>(0x0410 + byte - 0xC0);
        } else if (page == 932 && byte == 0x82 && index + 1 < bytes.size() &&
                   static_cast<uint8_t>(bytes[index + 1]) == 0xA0) {
            out += u'\u3042';
            ++index;
        } else {
            char shown[16];
            std::snprintf(shown, sizeof shown, "[%u:%02x]", page, byte);
            out += std::u16string(shown, shown + std::string(shown).size());
        }
    }
    return out;
}

std::u16string TextOf(std::string_view rtf) {
    return ReadRtf(rtf, FakeDecode).text;
}

struct TextRow {
    const char* name;
    std::string rtf;
    std::u16string text;
};

void ExpectTexts(const std::initializer_list<TextRow>& rows) {
    for (const TextRow& row : rows) {
        EXPECT_EQ(slib::Utf16ToUtf8(TextOf(row.rtf)), slib::Utf16ToUtf8(row.text))
            << row.name << ": " << row.rtf;
    }
}

TEST(RtfReader, EscapesSymbolsAndBreaks) {
    ExpectTexts({
        {"plain", "{\\rtf1 Hello}", u"Hello"},
        {"escaped specials", "{\\rtf1 a\\\\b\\{c\\}}", u"a\\b{c}"},
        {"source line breaks", "{\\rtf1 a\r\nb\nc}", u"abc"},
        {"closing paragraph mark", "{\\rtf1 a\\par b\\par}", u"a\rb"},
        {"only one closing mark", "{\\rtf1 a\\par\\par\r\n}", u"a\r"},
        {"tab and line", "{\\rtf1 a\\tab b\\line c}", u"a\tb\rc"},
        {"escaped line break is a paragraph", "{\\rtf1 a\\\nb}", u"a\rb"},
        {"symbols", "{\\rtf1 a\\~b\\-c\\_d\\emdash\\endash\\bullet}",
         u"a\u00A0bc\u2011d\u2014\u2013\u2022"},
        {"quotes", "{\\rtf1 \\lquote x\\rquote \\ldblquote y\\rdblquote}",
         u"\u2018x\u2019\u201Cy\u201D"},
        {"delimiting space only", "{\\rtf1 \\b  two}", u" two"},
        {"NUL dropped", "{\\rtf1 a\\u0?b\\'00c}", u"abc"},
        {"not RTF at all", "hello", u"hello"},
        {"a break outside the text is none", "{\\rtf1 ab{\\fonttbl\\\n}}", u"ab"},
    });
}

TEST(RtfReader, UnicodeEscapesSkipTheirFallbacks) {
    ExpectTexts({
        {"one fallback by default", "{\\rtf1 \\u937?x}", u"\u03A9x"},
        {"negative is the unit's signed form", "{\\rtf1 \\u-10188?\\u-8930?}", u"\U0001D11E"},
        {"\\uc2 skips two", "{\\rtf1\\uc2 \\u26085\\'93\\'fax}", u"\u65E5x"},
        {"\\uc0 skips none", "{\\rtf1\\uc0 \\u937 x}", u"\u03A9x"},
        {"a hex escape is one fallback", "{\\rtf1 \\u233\\'e9x}", u"\u00E9x"},
        {"a control word is one fallback", "{\\rtf1\\uc2 \\u937\\tab ab}", u"\u03A9b"},
        {"\\uc is scoped to its group", "{\\rtf1{\\uc2 \\u937 ab}\\u937?c}", u"\u03A9\u03A9c"},
        {"a brace ends the fallback", "{\\rtf1\\uc3 \\u937?{x}}", u"\u03A9x"},
        {"out-of-range number wraps to 16 bits", "{\\rtf1 \\u65601?}", u"A"},
        {"huge \\uc only skips to the group's end", "{\\rtf1{\\uc99999999999 \\u937 abc}d}",
         u"\u03A9d"},
    });
}

TEST(RtfReader, BytesAreDecodedInTheFontsCodePage) {
    ExpectTexts({
        {"\\ansicpg", "{\\rtf1\\ansi\\ansicpg1251 \\'c0}", u"\u0410"},
        {"raw bytes too", "{\\rtf1\\ansicpg1251 \xC0\xC1}", u"\u0410\u0411"},
        {"default 1252", "{\\rtf1 caf\\'e9}", u"caf\u00E9"},
        {"font charset over ansicpg",
         "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0\\fcharset0 Arial;}{\\f1\\fcharset204 Cyr;}}"
         "\\f1\\'c0\\f0\\'c0}",
         u"\u0410\u00C0"},
        {"double-byte pair kept together",
         "{\\rtf1{\\fonttbl{\\f0\\fcharset128 MS;}}\\f0\\'82\\'a0}", u"\u3042"},
        {"\\cpg over \\fcharset", "{\\rtf1{\\fonttbl{\\f0\\fcharset0\\cpg1251 C;}}\\f0\\'c0}",
         u"\u0410"},
        {"a page the decoder names", "{\\rtf1{\\fonttbl{\\f0\\fcharset222 Thai;}}\\f0\\'a1}",
         u"[874:a1]"},
        {"\\deff font's page", "{\\rtf1\\deff1{\\fonttbl{\\f1\\fcharset161 G;}}\\'e1}",
         u"[1253:e1]"},
        {"symbol charset uses the document's",
         "{\\rtf1\\ansicpg1251{\\fonttbl{\\f0\\fcharset2 S;}}"
         "\\f0\\'c0}",
         u"\u0410"},
        {"bad hex digits are text", "{\\rtf1 a\\'zzb\\'4}", u"azzb4"},
    });
}

TEST(RtfReader, DestinationsAreSkippedAndFieldsKeepTheirResult) {
    ExpectTexts({
        {"info and generator", "{\\rtf1{\\info{\\title T}{\\author A}}{\\*\\generator G;}A}", u"A"},
        {"stylesheet", "{\\rtf1{\\stylesheet{\\s0 Normal;}{\\s1 Heading;}}B}", u"B"},
        {"picture", "{\\rtf1 A{\\pict\\pngblip 89504e47}B}", u"AB"},
        {"unknown starred", "{\\rtf1 a{\\*\\unknown b{c}}d}", u"ad"},
        {"field result", "{\\rtf1{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt link}}}",
         u"link"},
        {"field instruction without star", "{\\rtf1{\\field{\\fldinst PAGE}{\\fldrslt 3}}}", u"3"},
        {"header and footnote", "{\\rtf1{\\header H}x{\\footnote F}}", u"x"},
        {"tables are no text",
         "{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red1\\green2\\blue3;}t}", u"t"},
    });
}

TEST(RtfReader, BinaryDataIsSkippedWithinTheInput) {
    ExpectTexts({
        {"binary holding braces", "{\\rtf1 a{\\*\\blob\\bin3 }}}}b}", u"ab"},
        {"binary in text", "{\\rtf1 a\\bin2 xyb}", u"ab"},
        {"length past the end", "{\\rtf1 a\\bin999 xyz", u"a"},
        {"largest length", "{\\rtf1 a\\bin99999999999999999999 x}", u"a"},
        {"negative length", "{\\rtf1 a\\bin-5 b}", u"ab"},
        {"no length", "{\\rtf1 a\\bin b}", u"ab"},
        {"one fallback after \\u", "{\\rtf1 \\u937\\bin1 xb}", u"\u03A9b"},
    });
}

TEST(RtfReader, UnbalancedInputKeepsItsText) {
    ExpectTexts({
        {"missing closing brace", "{\\rtf1 abc", u"abc"},
        {"missing inner closing brace", "{\\rtf1 a{b", u"ab"},
        {"stops at the document's end", "{\\rtf1 a}}b", u"a"},
        {"text after the document", "{\\rtf1 a}b", u"a"},
        {"stray closing brace first", "}x", u""},
        {"lone backslash at the end", "{\\rtf1 a\\", u"a"},
        {"lone star", "{\\rtf1 a\\*}", u"a"},
        {"word cut at the end", "{\\rtf1 a\\uc", u"a"},
        {"lone minus after a word", "{\\rtf1 \\b- x}", u"- x"},
        {"empty", "", u""},
    });
}

TEST(RtfReader, DeepNestingIsFlattenedNotRecursed) {
    const size_t depth = 100000;
    const std::string open(depth, '{');
    const std::string close(depth, '}');
    EXPECT_EQ(TextOf("{\\rtf1 a" + open + "b" + close + "c}"), u"abc");
    EXPECT_EQ(TextOf(open + "\\rtf1 x" + close), u"x");
    EXPECT_EQ(TextOf(open + "never closed"), u"never closed");
    // Past the limit, formats leak into the deepest kept group, but closing the kept groups
    // still restores what was outside them.
    const std::string kept(slib::kRtfMaxGroupDepth - 1, '{');
    const std::string keptClose(slib::kRtfMaxGroupDepth - 1, '}');
    const slib::RichText rich =
        ReadRtf("{\\rtf1 a" + kept + "{{\\b b}c}" + keptClose + "d}", FakeDecode);
    EXPECT_EQ(Describe(rich), "a=/12/auto/0000 bc=/12/auto/0100 d=/12/auto/0000");
}

TEST(RtfReader, FacesFollowTheirControlWords) {
    struct Row {
        const char* words;
        uint16_t face;
    };
    for (const Row& row : {
             Row{"\\b", 0x0100},
             Row{"\\i", 0x0200},
             Row{"\\b\\i", 0x0300},
             Row{"\\b\\b0", 0},
             Row{"\\ul", 0x0400},
             Row{"\\ulw", 0x0040},
             Row{"\\uldb", 0x0080},
             Row{"\\uld", 0x0400},
             Row{"\\ulwave", 0x0400},
             Row{"\\ul\\ulnone", 0},
             Row{"\\ul\\ul0", 0},
             Row{"\\ul\\ulw", 0x0040},
             Row{"\\ulc3\\b", 0x0100},
             Row{"\\strike", 0x0001},
             Row{"\\striked1", 0x0001},
             Row{"\\super", 0x0004},
             Row{"\\sub", 0x0008},
             Row{"\\super\\sub", 0x0008},
             Row{"\\super\\nosupersub", 0},
             Row{"\\scaps", 0x0002},
             Row{"\\caps", 0x0010},
             Row{"\\b\\i\\ul\\plain", 0},
             Row{"\\b\\pard", 0x0100},
         }) {
        const slib::RichText rich =
            ReadRtf(std::string("{\\rtf1 ") + row.words + " x}", FakeDecode);
        ASSERT_EQ(rich.runs.size(), 1u) << row.words;
        EXPECT_EQ(rich.runs[0].format.face, row.face) << row.words;
    }
}

TEST(RtfReader, FontsSizesAndColoursMakeRuns) {
    struct Row {
        const char* name;
        std::string rtf;
        const char* runs;
    };
    for (const Row& row : {
             Row{"table and switches",
                 "{\\rtf1{\\fonttbl{\\f0\\fnil Arial;}{\\f1 Times New Roman;}}"
                 "{\\colortbl;\\red255\\green0\\blue0;}\\f0\\fs20 a\\b b\\b0\\f1\\cf1 c}",
                 "a=Arial/10/auto/0000 b=Arial/10/auto/0100 c=Times New Roman/10/ff0000/0000"},
             Row{"groups restore", "{\\rtf1 a{\\b\\fs40 b}c}",
                 "a=/12/auto/0000 b=/20/auto/0100 c=/12/auto/0000"},
             Row{"\\deff when no \\f",
                 "{\\rtf1\\deff1{\\fonttbl{\\f0 A;}{\\f1 B;}}x\\f0 y\\plain z}",
                 "x=B/12/auto/0000 y=A/12/auto/0000 z=B/12/auto/0000"},
             Row{"auto, missing and clamped colours",
                 "{\\rtf1{\\colortbl;\\red300\\green-4\\blue7;}\\cf0 a\\cf9 b\\cf1 c}",
                 "ab=/12/auto/0000 c=/12/ff0007/0000"},
             Row{"font names in other scripts",
                 "{\\rtf1{\\fonttbl{\\f0\\fcharset204 \\'d2\\'e5\\'f1\\'f2;}"
                 "{\\f1\\fcharset0 \\u-211?\\u-205? \\u12468?;}}\\f0 a\\f1 b}",
                 "a=\xD0\xA2\xD0\xB5\xD1\x81\xD1\x82/12/auto/0000 "
                 "b=\xEF\xBC\xAD\xEF\xBC\xB3 \xE3\x82\xB4/12/auto/0000"},
             Row{"flat table, nested extras, no semicolon",
                 "{\\rtf1{\\fonttbl\\f0\\fswiss Arial;\\f1{\\*\\panose 02}Times{\\*\\falt T}}"
                 "{\\fonttbl{\\f2 Courier}}\\f1 a\\f2 b}",
                 "a=Times/12/auto/0000 b=Courier/12/auto/0000"},
             Row{"unknown font and huge size", "{\\rtf1\\f7\\fs99999999999 a}",
                 "a=/65535/auto/0000"},
             Row{"zero size kept at the last", "{\\rtf1\\fs30\\fs0 a}", "a=/15/auto/0000"},
             Row{"half a point is one", "{\\rtf1\\fs1 a}", "a=/1/auto/0000"},
         }) {
        EXPECT_EQ(Describe(ReadRtf(row.rtf, FakeDecode)), row.runs) << row.name;
    }
}

// What our writer makes of what the reader read reads back as the same text, and after one trip
// (which fills in the writer's defaults) the formats are a fixed point: the properties the fuzz
// target checks on random input.
TEST(RtfReader, TheWritersRtfReadsBackTheSame) {
    for (const char* rtf : {
             "{\\rtf1 a\\par\\par}",
             "{\\rtf1 \\u-10188?\\u-8930?\\tab\\'00\\u10?}",
             "{\\rtf1{\\fonttbl{\\f0\\fcharset0 \\u-211?;x;}}{\\colortbl;\\red1\\green2\\blue3;}"
             "\\f0\\cf1\\ul\\super a\\uldb\\sub b\\plain\\scaps{\\caps c}}",
             "{\\rtf1\\fs1 a{\\fonttbl{\\f0 {\\}\\\\;}}\\f0 b}",
         }) {
        const slib::RichText first = ReadRtf(rtf, FakeDecode);
        const slib::RichText second = ReadRtf(slib::WriteRtf(first), FakeDecode);
        const slib::RichText third = ReadRtf(slib::WriteRtf(second), FakeDecode);
        EXPECT_EQ(second.text, first.text) << rtf;
        EXPECT_EQ(Describe(third), Describe(second)) << rtf;
    }
}

}  // namespace
