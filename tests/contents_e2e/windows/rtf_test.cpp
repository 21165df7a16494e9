// The "rtf" encoding both ways through the system's rich-edit control.
#include <windows.h>

#include <richedit.h>

#include <algorithm>
#include <cstring>

#include "contents_fixture.h"

namespace contents_test {
namespace {

class Rtf : public ContentsTest {};

// Every style we map, and characters from beyond any single code page.
const char16_t kStyled[] =
    u"\"Plain \" & TextStyleAdd( \"bold\" ; Bold ) & \" \" & TextStyleAdd( \"it\" ; Italic ) & "
    u"\" \" & TextColor( TextFont( TextSize( \"\u03A9 big\" ; 20 ) ; \"Times New Roman\" ) ; "
    u"RGB( 255 ; 0 ; 0 ) ) & \" \U0001D11E \u65E5\u672C \" & TextStyleAdd( \"u\" ; Underline ) & "
    u"TextStyleAdd( \"w\" ; WordUnderline ) & TextStyleAdd( \"d\" ; DoubleUnderline ) & "
    u"TextStyleAdd( \"s\" ; Strikethrough )";

bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(Rtf, StyledTextBecomesPlainAsciiRtfWithItsStyles) {
    ASSERT_EQ(write(u"styled.rtf", kStyled, u"\"rtf\""), Succeeded());
    const std::string rtf = bytesOf(u"styled.rtf");
    EXPECT_EQ(rtf.compare(0, 6, "{\\rtf1"), 0) << rtf;
    EXPECT_EQ(std::count_if(rtf.begin(), rtf.end(), [](char c) { return c & 0x80; }), 0);
    for (const char* part :
         {"Plain ", "\\b bold\\b0", "\\i it\\i0", "\\fs40", "Times New Roman",
          "\\red255\\green0\\blue0", "\\u937? big", "\\u-10188?\\u-8930?", "\\u26085?\\u26412?",
          "\\ul u", "\\ulw w", "\\uldb d", "\\strike", "s\\strike0"}) {
        EXPECT_TRUE(Holds(rtf, part)) << part << " in " << rtf;
    }
    // Unstyled text is plain, not the control's own bold default.
    EXPECT_FALSE(Holds(rtf.substr(0, rtf.find("Plain")), "\\b "));
}

TEST_F(Rtf, RtfReadsBackAsTheSameStyledText) {
    ASSERT_EQ(write(u"first.rtf", kStyled, u"\"rtf\""), Succeeded());
    EXPECT_EQ(read(u"first.rtf", u"\"rtf\""),
              "Plain bold it \u03A9 big \U0001D11E \u65E5\u672C uwds");
    // Styles survive the trip: the text read as RTF writes the same RTF again.
    ASSERT_EQ(write(u"second.rtf", u"VFile_Read( \"first.rtf\" ; \"rtf\" )", u"\"rtf\""),
              Succeeded());
    EXPECT_EQ(bytesOf(u"second.rtf"), bytesOf(u"first.rtf"));
}

// As word processors write it, every font with its character set: a font without one has its
// "\\'" bytes read in the system code page by Wine's reader, whatever "\\ansicpg" says.
TEST_F(Rtf, RtfFromElsewhereIsRead) {
    writeFile(u"word.rtf",
              "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0\\fmodern\\fcharset0 Courier "
              "New;}}{\\colortbl;\\red0\\green0"
              "\\blue255;}\\f0\\fs20 caf\\'e9 \\cf1\\b blue\\b0\\cf0  \\u1055?\\u1088?\\par}");
    EXPECT_EQ(read(u"word.rtf", u"\"rtf\""), "café blue Пр");
    ASSERT_EQ(write(u"again.rtf", u"VFile_Read( \"word.rtf\" ; \"rtf\" )", u"\"rtf\""),
              Succeeded());
    const std::string again = bytesOf(u"again.rtf");
    for (const char* part : {"Courier New", "\\fs20", "\\red0\\green0\\blue255",
                             "\\b\\cf1 blue\\b0", "caf\\u233?", "\\u1055?\\u1088?"}) {
        EXPECT_TRUE(Holds(again, part)) << part << " in " << again;
    }
}

TEST_F(Rtf, TextWithANulIsRefusedNotCut) {
    writeFile(u"nul.txt", std::string("a\0b", 3));
    writeFile(u"keep.rtf", "keep");
    EXPECT_EQ(write(u"keep.rtf", u"VFile_Read( \"nul.txt\" ; \"utf-8\" )", u"\"rtf\""),
              Failed(-50, "Rich text cannot hold a NUL character"));
    EXPECT_EQ(bytesOf(u"keep.rtf"), "keep");
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

// Whether the system's rich-edit reader keeps small and all capitals: asked of the control itself.
bool ReaderKeepsCapitals() {
    const HMODULE library = LoadLibraryW(L"Msftedit.dll");
    const HWND window = CreateWindowExW(0, MSFTEDIT_CLASS, L"", ES_MULTILINE, 0, 0, 0, 0,
                                        HWND_MESSAGE, nullptr, nullptr, nullptr);
    std::string rtf = "{\\rtf1 {\\scaps a}{\\caps b}}";
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&rtf), 0,
                      [](DWORD_PTR cookie, LPBYTE bytes, LONG count, LONG* done) -> DWORD {
                          std::string& left = *reinterpret_cast<std::string*>(cookie);
                          *done = static_cast<LONG>(std::min<size_t>(left.size(), count));
                          std::memcpy(bytes, left.data(), static_cast<size_t>(*done));
                          left.erase(0, static_cast<size_t>(*done));
                          return 0;
                      }};
    SendMessageW(window, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
    DWORD effects = 0;
    for (const int at : {0, 1}) {
        SendMessageW(window, EM_SETSEL, at, at + 1);
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(window, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        effects |= format.dwEffects & (at == 0 ? CFE_SMALLCAPS : CFE_ALLCAPS);
    }
    DestroyWindow(window);
    FreeLibrary(library);
    return effects == (CFE_SMALLCAPS | CFE_ALLCAPS);
}

TEST_F(Rtf, SmallAndAllCapitalsComeBackWhereTheSystemReaderKeepsThem) {
    ASSERT_EQ(write(u"caps.rtf",
                    u"TextStyleAdd( \"small\" ; SmallCaps ) & TextStyleAdd( \"all\" ; Uppercase )",
                    u"\"rtf\""),
              Succeeded());
    const std::string rtf = bytesOf(u"caps.rtf");
    EXPECT_TRUE(Holds(rtf, "\\scaps") && Holds(rtf, "\\caps")) << rtf;
    EXPECT_EQ(rtf.back(), '}');  // and nothing after the document
    if (!ReaderKeepsCapitals()) {
        GTEST_SKIP() << "the system's rich-edit reader drops \\scaps and \\caps when it reads "
                        "RTF (asked of the control itself), so they cannot come back";
    }
    ASSERT_EQ(write(u"again.rtf", u"VFile_Read( \"caps.rtf\" ; \"rtf\" )", u"\"rtf\""),
              Succeeded());
    EXPECT_EQ(bytesOf(u"again.rtf"), rtf);
}

}  // namespace
}  // namespace contents_test
