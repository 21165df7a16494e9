// Text and formats written as plain ASCII RTF, and read back by our reader as they were.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "foundation/rtf_reader.h"
#include "foundation/rtf_writer.h"
#include "rich_text_description.h"

namespace {

using rich_text_test::Describe;
using slib::RichFormat;
using slib::RichText;
using slib::WriteRtf;

std::u16string Latin1(uint32_t, std::string_view bytes) {
    return std::u16string(bytes.begin(), bytes.end());
}

RichFormat Format(std::u16string font, uint16_t size, uint16_t face) {
    RichFormat format;
    format.font = std::move(font);
    format.size = size;
    format.face = face;
    return format;
}

RichFormat Colored(RichFormat format, uint8_t red, uint8_t green, uint8_t blue) {
    format.hasColor = true;
    format.red = red;
    format.green = green;
    format.blue = blue;
    return format;
}

TEST(RtfWriter, TheDocumentIsLaidOutAsTheControlWritesIt) {
    EXPECT_EQ(WriteRtf(RichText{u"Hi", {}}),
              "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 Arial;}}\r\n"
              "\\uc1\\pard\\f0\\fs24 Hi\\par\r\n}");
    const std::string coloured =
        WriteRtf(RichText{u"ab", {{1, 2, Colored(Format(u"Times", 20, 0), 255, 0, 9)}}});
    EXPECT_NE(coloured.find("{\\f1\\fnil\\fcharset0 Times;}}\r\n"
                            "{\\colortbl ;\\red255\\green0\\blue9;}\r\n"),
              std::string::npos)
        << coloured;
    EXPECT_NE(coloured.find("a\\f1\\fs40\\cf1 b\\f0\\fs24\\cf0 \\par\r\n}"), std::string::npos)
        << coloured;
}

TEST(RtfWriter, CharactersAreEscapedIntoPlainAscii) {
    struct Row {
        std::u16string text;
        const char* body;
    };
    for (const Row& row : {
             Row{u"a\\b{c}", "a\\\\b\\{c\\}"},
             Row{u"caf\u00E9 \u03A9", "caf\\u233? \\u937?"},
             Row{u"\U0001D11E", "\\u-10188?\\u-8930?"},
             Row{u"\uFFFD", "\\u-3?"},
             Row{u"a\tb", "a\\tab b"},
             Row{u"a\rb", "a\\par\r\nb"},
             Row{u"a\nb\x7F", "a\\u10?b\\u127?"},
             Row{u"semi;colon", "semi;colon"},
         }) {
        const std::string rtf = WriteRtf(RichText{row.text, {}});
        EXPECT_NE(rtf.find(std::string("\\fs24 ") + row.body + "\\par\r\n}"), std::string::npos)
            << row.body << " in " << rtf;
        EXPECT_TRUE(std::none_of(rtf.begin(), rtf.end(), [](char c) { return c & 0x80; }));
    }
}

TEST(RtfWriter, FacesBecomeTheirControlWords) {
    struct Row {
        uint16_t face;
        const char* words;  // turning the face on, before the text
    };
    for (const Row& row : {
             Row{0x0100, "\\b "}, Row{0x0200, "\\i "}, Row{0x0300, "\\b\\i "}, Row{0x0400, "\\ul "},
             Row{0x0040, "\\ulw "}, Row{0x0080, "\\uldb "}, Row{0x04C0, "\\uldb "},
             Row{0x0001, "\\strike "}, Row{0x0004, "\\super "}, Row{0x0008, "\\sub "},
             Row{0x000C, "\\super "}, Row{0x0002, "\\scaps "}, Row{0x0010, "\\caps "},
             Row{0x0030, nullptr}, Row{0x0020, nullptr},
             Row{0x7800, nullptr},  // outline, shadow, condensed, extended
         }) {
        const std::string rtf = WriteRtf(RichText{u"x", {{0, 1, Format(u"", 0, row.face)}}});
        const std::string expected = std::string("\\fs24 ") + (row.words ? row.words : "") + "x";
        EXPECT_NE(rtf.find(expected), std::string::npos) << row.face << ": " << rtf;
    }
}

TEST(RtfWriter, StyledTextReadsBackWithItsStyles) {
    struct Row {
        const char* name;
        RichText rich;
        const char* runs;  // as read back: unset traits are the writer's defaults
    };
    for (const Row& row : {
             Row{"unstyled", RichText{u"plain", {}}, "plain=Arial/12/auto/0000"},
             Row{"empty", RichText{u"", {}}, ""},
             Row{"gaps between runs",
                 RichText{u"a bold c",
                          {{2, 6, Format(u"", 0, 0x0100)}, {7, 8, Format(u"Times", 9, 0x0200)}}},
                 "a =Arial/12/auto/0000 bold=Arial/12/auto/0100  =Arial/12/auto/0000 "
                 "c=Times/9/auto/0200"},
             Row{"every face, one after another",
                 RichText{u"uwdsSPsc",
                          {{0, 1, Format(u"", 0, 0x0400)},
                           {1, 2, Format(u"", 0, 0x0040)},
                           {2, 3, Format(u"", 0, 0x0080)},
                           {3, 4, Format(u"", 0, 0x0001)},
                           {4, 5, Format(u"", 0, 0x0004)},
                           {5, 6, Format(u"", 0, 0x0008)},
                           {6, 7, Format(u"", 0, 0x0002)},
                           {7, 8, Format(u"", 0, 0x0010)}}},
                 "u=Arial/12/auto/0400 w=Arial/12/auto/0040 d=Arial/12/auto/0080 "
                 "s=Arial/12/auto/0001 S=Arial/12/auto/0004 P=Arial/12/auto/0008 "
                 "s=Arial/12/auto/0002 c=Arial/12/auto/0010"},
             Row{"fonts in any script and colours",
                 RichText{u"\u0410b\r",
                          {{0, 1, Colored(Format(u"\uFF2D\uFF33 \u30B4;{x}", 30, 0), 1, 2, 3)},
                           {1, 3, Colored(Format(u"Arial", 12, 0), 0, 0, 0)}}},
                 "\xD0\x90=\xEF\xBC\xAD\xEF\xBC\xB3 \xE3\x82\xB4;{x}/30/010203/0000 "
                 "b\r=Arial/12/000000/0000"},
             Row{"runs past the end are cut", RichText{u"ab", {{1, 9, Format(u"", 0, 0x0100)}}},
                 "a=Arial/12/auto/0000 b=Arial/12/auto/0100"},
         }) {
        const RichText back = slib::ReadRtf(WriteRtf(row.rich), Latin1);
        EXPECT_EQ(back.text, row.rich.text) << row.name;
        EXPECT_EQ(Describe(back), row.runs) << row.name;
    }
}

}  // namespace
