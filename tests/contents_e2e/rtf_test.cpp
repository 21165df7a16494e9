// The "rtf" encoding both ways, on both systems: RTF from elsewhere read as styled text, and
// styled text written as RTF and read back. Styles are seen through the RTF the plug-in writes
// for what it read. Where the system's rich-edit control and our own reader differ, the row says
// what each gives (each difference is a documented choice).
#include <algorithm>
#include <string>

#include "contents_fixture.h"
#include "system_answers.h"

namespace contents_test {
namespace {

class Rtf : public ContentsTest {};

bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

bool PlainAscii(const std::string& bytes) {
    return std::none_of(bytes.begin(), bytes.end(), [](char c) { return c & 0x80; });
}

struct ReadRow {
    const char* name;
    std::string rtf;
    const char* text;  // as read, UTF-8
    // What the RTF written for the text read holds (styles seen through our writing).
    std::vector<const char*> written;
    const char* controlText = nullptr;  // where the system's control reads otherwise
    bool controlRefuses = false;        // where it cannot read the RTF at all
};

const ReadRow kReadRows[] = {
    {"word processor's document",
     "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0\\fmodern\\fcharset0 Courier New;}}{\\colortbl;"
     "\\red0\\green0\\blue255;}\\f0\\fs20 caf\\'e9 \\cf1\\b blue\\b0\\cf0  \\u1055?\\u1088?\\par}",
     "café blue Пр",
     {"Courier New", "\\fs20", "\\red0\\green0\\blue255", "\\b\\cf1 blue\\b0", "caf\\u233?",
      "\\u1055?\\u1088?"}},
    {"paragraphs and tabs",
     "{\\rtf1 one\\par two\\tab three\\par}",
     "one\rtwo\tthree",
     {"one\\par", "two\\tab three"}},
    {"fallbacks after unicode escapes",
     "{\\rtf1\\uc2 \\u26085\\'93\\'fa\\uc1 \\u937?x}",
     "日Ωx",
     {"\\u26085?\\u937?x"}},
    {"code page of each font",
     "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0\\fcharset0 Arial;}{\\f1\\fcharset204 Arial Cyr;}}"
     "\\f1\\'cf\\'f0 \\f0\\'e9}",
     "Пр é",
     {"Arial Cyr"}},
    {"double-byte font",
     "{\\rtf1\\ansi{\\fonttbl{\\f0\\fcharset128 MS Gothic;}}\\f0\\'82\\'a0}",
     "あ",
     {"MS Gothic", "\\u12354?"}},
    {"skipped destinations, field results",
     "{\\rtf1{\\info{\\title T}}{\\*\\generator G;}{\\stylesheet{\\s0 Normal;}}A{\\field{\\*"
     "\\fldinst HYPERLINK \"x\"}{\\fldrslt link}}B}",
     "AlinkB",
     {},
     "AB"},
    {"faces",
     "{\\rtf1 {\\i i}{\\ul u}{\\ulw w}{\\uldb d}{\\strike s}{\\super p}{\\sub b}}",
     "iuwdspb",
     {"i\\i0", "\\ul u", "\\ulw w", "\\uldb d", "s\\strike0", "\\super p", "\\sub b"}},
    {"missing closing brace", "{\\rtf1 abc", "abc", {}, nullptr, true},
    {"line break", "{\\rtf1 a\\line b}", "a\rb", {}, "a b"},
    {"not RTF at all", "plain words", "plain words", {}, nullptr, true},
};

TEST_F(Rtf, RtfFromElsewhereIsReadWithItsStyles) {
    for (const ReadRow& row : kReadRows) {
        SCOPED_TRACE(row.name);
        writeFile(u"in.rtf", row.rtf);
        const bool control = kRtfReader == RtfReader::kSystemControl;
        if (control && row.controlRefuses) {
            EXPECT_EQ(call(u"VFile_Read( \"in.rtf\" ; \"rtf\" )"),
                      Failed(2400, "Cannot convert rich text"));
            continue;
        }
        EXPECT_EQ(read(u"in.rtf", u"\"rtf\""),
                  control && row.controlText ? row.controlText : row.text);
        ASSERT_EQ(write(u"again.rtf", u"VFile_Read( \"in.rtf\" ; \"rtf\" )", u"\"rtf\""),
                  Succeeded());
        const std::string again = bytesOf(u"again.rtf");
        EXPECT_TRUE(PlainAscii(again)) << again;
        for (const char* part : row.written) {
            EXPECT_TRUE(Holds(again, part)) << part << " in " << again;
        }
    }
}

// Our reader flattens groups past its limit; the control is never handed more than that limit,
// and the one under Wine crashes on more than 32 levels, so it is asked only that deep.
TEST_F(Rtf, DeepNestingNeverTakesTheHostDown) {
    const auto nested = [](size_t depth) {
        return "{\\rtf1 a" + std::string(depth - 1, '{') + "b" + std::string(depth - 1, '}') + "c}";
    };
    writeFile(u"kept.rtf", nested(kRtfReader == RtfReader::kSystemControl ? 32 : 512));
    EXPECT_EQ(read(u"kept.rtf", u"\"rtf\""), "abc");
    writeFile(u"deep.rtf", nested(100000));
    if (kRtfReader == RtfReader::kSystemControl) {
        EXPECT_EQ(call(u"VFile_Read( \"deep.rtf\" ; \"rtf\" )"),
                  Failed(2400, "Cannot convert rich text"));
    } else {
        EXPECT_EQ(read(u"deep.rtf", u"\"rtf\""), "abc");
    }
}

// Word processors always name a font's character set; without one, its bytes are read in the
// document's code page by our reader and in the system's by the control.
TEST_F(Rtf, BytesOfAFontWithoutACharacterSet) {
    writeFile(u"bare.rtf", "{\\rtf1\\ansi\\ansicpg1251{\\fonttbl{\\f0 Arial;}}\\f0\\'c0}");
    EXPECT_EQ(read(u"bare.rtf", u"\"rtf\""),
              kRtfReader == RtfReader::kPortable ? "\u0410" : NativeText("\xC0"));
}

// Every style we map, and characters from beyond any single code page.
const char16_t kStyled[] =
    u"\"Plain \" & TextStyleAdd( \"bold\" ; Bold ) & \" \" & TextStyleAdd( \"it\" ; Italic ) & "
    u"\" \" & TextColor( TextFont( TextSize( \"\u03A9 big\" ; 20 ) ; \"Times New Roman\" ) ; "
    u"RGB( 255 ; 0 ; 0 ) ) & \" \U0001D11E \u65E5\u672C \" & TextStyleAdd( \"u\" ; Underline ) & "
    u"TextStyleAdd( \"w\" ; WordUnderline ) & TextStyleAdd( \"d\" ; DoubleUnderline ) & "
    u"TextStyleAdd( \"s\" ; Strikethrough ) & \"\u00B6\" & TextStyleAdd( \"p\" ; Superscript ) & "
    u"TextStyleAdd( \"b\" ; Subscript ) & \"\t{\\\\}\"";

TEST_F(Rtf, StyledTextBecomesPlainAsciiRtfWithItsStyles) {
    ASSERT_EQ(write(u"styled.rtf", kStyled, u"\"rtf\""), Succeeded());
    const std::string rtf = bytesOf(u"styled.rtf");
    EXPECT_EQ(rtf.compare(0, 6, "{\\rtf1"), 0) << rtf;
    EXPECT_EQ(rtf.back(), '}');
    EXPECT_TRUE(PlainAscii(rtf)) << rtf;
    for (const char* part : {"Plain ", "\\b bold\\b0", "\\i it\\i0", "\\fs40", "Times New Roman",
                             "\\red255\\green0\\blue0", "\\u937? big", "\\u-10188?\\u-8930?",
                             "\\u26085?\\u26412?", "\\ul u", "\\ulw w", "\\uldb d", "\\strike",
                             "s\\strike0", "\\super p", "\\sub b", "\\tab", "\\{\\\\\\}"}) {
        EXPECT_TRUE(Holds(rtf, part)) << part << " in " << rtf;
    }
    // Unstyled text is plain, not the control's own bold default.
    EXPECT_FALSE(Holds(rtf.substr(0, rtf.find("Plain")), "\\b "));
}

TEST_F(Rtf, RtfReadsBackAsTheSameStyledText) {
    ASSERT_EQ(write(u"first.rtf", kStyled, u"\"rtf\""), Succeeded());
    EXPECT_EQ(read(u"first.rtf", u"\"rtf\""),
              "Plain bold it \u03A9 big \U0001D11E \u65E5\u672C uwds\rpb\t{\\}");
    // Styles survive the trip: the text read as RTF writes the same RTF again.
    ASSERT_EQ(write(u"second.rtf", u"VFile_Read( \"first.rtf\" ; \"rtf\" )", u"\"rtf\""),
              Succeeded());
    EXPECT_EQ(bytesOf(u"second.rtf"), bytesOf(u"first.rtf"));
}

TEST_F(Rtf, FontNamesInAnyScriptComeBack) {
    ASSERT_EQ(
        write(u"fonts.rtf",
              u"TextFont( \"a\" ; \"\uFF2D\uFF33 \u30B4\u30B7\u30C3\u30AF\" ) & "
              u"TextFont( \"b\" ; \"\u0100rial \u016Anicode\" ) & TextFont( \"c\" ; \"Arial\" )",
              u"\"rtf\""),
        Succeeded());
    ASSERT_EQ(write(u"again.rtf", u"VFile_Read( \"fonts.rtf\" ; \"rtf\" )", u"\"rtf\""),
              Succeeded());
    EXPECT_EQ(bytesOf(u"again.rtf"), bytesOf(u"fonts.rtf"));
    EXPECT_TRUE(Holds(bytesOf(u"again.rtf"), "\\u-211?\\u-205? \\u12468?"))
        << bytesOf(u"again.rtf");
}

TEST_F(Rtf, TextWithANulIsRefusedNotCut) {
    writeFile(u"nul.txt", std::string("a\0b", 3));
    writeFile(u"keep.rtf", "keep");
    EXPECT_EQ(write(u"keep.rtf", u"VFile_Read( \"nul.txt\" ; \"utf-8\" )", u"\"rtf\""),
              Failed(-50, "Rich text cannot hold a NUL character"));
    EXPECT_EQ(bytesOf(u"keep.rtf"), "keep");
}

TEST_F(Rtf, SmallAndAllCapitalsComeBackWhereTheReaderKeepsThem) {
    ASSERT_EQ(write(u"caps.rtf",
                    u"TextStyleAdd( \"small\" ; SmallCaps ) & TextStyleAdd( \"all\" ; Uppercase )",
                    u"\"rtf\""),
              Succeeded());
    const std::string rtf = bytesOf(u"caps.rtf");
    EXPECT_TRUE(Holds(rtf, "\\scaps") && Holds(rtf, "\\caps")) << rtf;
    if (!RtfReaderKeepsCapitals()) {
        GTEST_SKIP() << "the system's rich-edit reader drops \\scaps and \\caps when it reads "
                        "RTF (asked of the control itself), so they cannot come back";
    }
    ASSERT_EQ(write(u"again.rtf", u"VFile_Read( \"caps.rtf\" ; \"rtf\" )", u"\"rtf\""),
              Succeeded());
    EXPECT_EQ(bytesOf(u"again.rtf"), rtf);
}

}  // namespace
}  // namespace contents_test
