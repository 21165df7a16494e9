// Formatting a native path in every output style, and the case folding relative styles use.

#include <gtest/gtest.h>

#include <string>

#include "fake_path_system.h"
#include "foundation/case_fold.h"
#include "foundation/path.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace {

struct FormatCase {
    const char16_t* path;
    int style;
    const char16_t* expected;
};

// Anchor C:\Data\; C:\Program Files\ has a short form; C:\, C:\Data\ and C:\Data\Sub are folders.
// Styles: 0 native (as held), 1 unix, 2 windows (one trailing separator goes, except at the root),
// 4 url, 5 short (else as given), 7 host (folders marked, a trailing separator kept as held),
// 16-18 relative: the anchor is matched without case, is "." itself, and a sibling that only
// shares its name as a prefix (C:\Database) is outside it.
const FormatCase kFormatCases[] = {{u"C:\\Data\\a.txt", 0, u"C:\\Data\\a.txt"},
                                   {u"C:\\Data\\", 0, u"C:\\Data\\"},
                                   {u"C:\\Data\\a.txt", 1, u"/Data/a.txt"},
                                   {u"C:\\Data\\", 1, u"/Data"},
                                   {u"C:\\", 1, u"/"},
                                   {u"C:", 1, u"C:"},
                                   {u"D:\\Data\\a.txt", 1, u"D:/Data/a.txt"},
                                   {u"\\\\srv\\share\\a.txt", 1, u"//srv/share/a.txt"},
                                   {u"\\\\srv\\share\\a.txt", 4, u"file:////srv/share/a.txt"},
                                   {u"\\\\srv\\share\\a.txt", 7, u"file://srv/share/a.txt"},
                                   {u"C:\\Data\\~x.txt", 16, u".\\~x.txt"},
                                   {u"C:\\Data\\~x.txt", 17, u"./~x.txt"},
                                   {u"", 1, u""},
                                   {u"C:\\Data\\a.txt", 2, u"C:\\Data\\a.txt"},
                                   {u"C:\\Data\\", 2, u"C:\\Data"},
                                   {u"C:\\Data\\\\", 2, u"C:\\Data\\"},
                                   {u"C:\\", 2, u"C:\\"},
                                   {u"C:\\/", 2, u"C:"},
                                   {u"C:\\Data\\a.txt", 4, u"file://C:/Data/a.txt"},
                                   {u"C:\\Data\\", 4, u"file://C:/Data"},
                                   {u"C:\\", 4, u"file://C:"},
                                   {u"C:\\Program Files\\", 5, u"C:\\PROGRA~1"},
                                   {u"C:\\No Such Folder\\", 5, u"C:\\No Such Folder"},
                                   {u"C:\\Data\\a.txt", 7, u"file:/C:/Data/a.txt"},
                                   {u"C:\\Data\\Sub", 7, u"file:/C:/Data/Sub/"},
                                   {u"C:\\Data\\", 7, u"file:/C:/Data/"},
                                   {u"C:\\", 7, u"file:/C:/"},
                                   {u"C:\\Data\\gone\\", 7, u"file:/C:/Data/gone/"},
                                   {u"C:\\Data\\a.txt", 16, u"a.txt"},
                                   {u"C:\\Data\\sub\\b.txt", 16, u"sub\\b.txt"},
                                   {u"C:\\Data\\sub\\b.txt", 17, u"sub/b.txt"},
                                   {u"C:\\Data\\sub\\b.txt", 18, u"sub\\b.txt"},
                                   {u"C:\\Data\\sub\\", 18, u"sub"},
                                   {u"c:\\dATA\\A.TXT", 16, u"A.TXT"},
                                   {u"C:\\Data\\", 16, u"."},
                                   {u"C:\\Data", 17, u"."},
                                   {u"C:\\Other\\a.txt", 16, u"C:\\Other\\a.txt"},
                                   {u"C:\\Other\\a.txt", 17, u"C:/Other/a.txt"},
                                   {u"C:\\Other\\", 18, u"C:\\Other"},
                                   {u"C:\\Database\\a.txt", 16, u"C:\\Database\\a.txt"},
                                   {u"C:\\", 16, u"C:\\"}};

class PathFormat : public ::testing::TestWithParam<FormatCase> {
  protected:
    PathFormat() {
        system.shortNames[u"C:\\Program Files\\"] = u"C:\\PROGRA~1\\";
        system.folders = {u"C:\\Data\\Sub", u"C:\\Data\\", u"C:\\"};
    }
    std::u16string format(const std::u16string& path, int style, const Path& anchor) {
        return Path(path).format(style, anchor, system)->units();
    }

    testing::FakePathSystem system;
};

TEST_P(PathFormat, GivesTheStylesText) {
    const FormatCase& c = GetParam();
    EXPECT_EQ(format(c.path, c.style, Path(u"C:\\Data\\")), c.expected)
        << ::testing::PrintToString(std::u16string(c.path)) << " in style " << c.style;
}
INSTANTIATE_TEST_SUITE_P(EveryStyle, PathFormat, ::testing::ValuesIn(kFormatCases));

TEST_F(PathFormat, AnchorsWithoutSeparatorOrAtTheRootOrAbsent) {
    EXPECT_EQ(format(u"C:\\Data\\a.txt", 16, Path(u"C:\\Data")), u"a.txt");
    EXPECT_EQ(format(u"C:\\x", 16, Path(u"C:\\")), u"x");
    EXPECT_EQ(format(u"C:\\Data\\a.txt", 17, Path(Path::kDefaultAnchor)), u"C:/Data/a.txt");
}

// Every form VFile_Get hands out, fed back as a path, names the item it came from: on the anchor's
// drive, on another drive, on a share, at a root, below and beside the anchor. (The short form is
// the system's own alias of the same item and is not textual.)
TEST_F(PathFormat, EveryFormFedBackNamesTheSameItem) {
    const Path anchors[] = {Path(u"C:\\Data\\"), Path(u"\\\\srv\\share\\db"),
                            Path(Path::kDefaultAnchor)};
    const std::u16string paths[] = {u"C:\\Data\\a.txt",
                                    u"C:\\Data\\Sub",
                                    u"C:\\Data",
                                    u"C:\\Other\\x y.txt",
                                    u"C:\\",
                                    u"D:\\Data\\a.txt",
                                    u"D:\\",
                                    u"\\\\srv\\share\\db\\a",
                                    u"\\\\srv\\share\\",
                                    u"\\\\srv\\other\\a",
                                    u"C:\\Data\\~x.txt"};
    for (const Path& anchor : anchors) {
        for (const std::u16string& path : paths) {
            for (int style : {0, 1, 2, 4, 7, 16, 17, 18}) {
                const std::u16string text = format(path, style, anchor);
                if (anchor.isDefaultAnchor() && (style & 0x10) != 0 && text[0] == u'.') {
                    continue;  // relative to nothing: cannot be fed back, and is refused
                }
                EXPECT_EQ(Path::Parse(text, anchor, system)->text(), path)
                    << ::testing::PrintToString(text) << " style " << style << " anchor "
                    << ::testing::PrintToString(anchor.text());
            }
        }
    }
}

TEST_F(PathFormat, UnknownStylesAreNativeWithTheTrailingRule) {
    for (int style : {3, 6, 8, 15, 19, 20, 23, 32, -1, 1000}) {
        EXPECT_EQ(format(u"C:\\Data\\", style, Path(u"C:\\Data\\")), u"C:\\Data") << style;
        EXPECT_EQ(format(u"C:\\", style, Path(u"C:\\Data\\")), u"C:\\") << style;
    }
}

TEST(CaseFold, UpperCasesTheScriptsOfCommonFileNames) {
    const std::pair<char16_t, char16_t> pairs[] = {
        {u'a', u'A'}, {u'z', u'Z'}, {u'é', u'É'}, {u'þ', u'Þ'}, {u'ÿ', u'Ÿ'},
        {u'ā', u'Ā'}, {u'ĳ', u'Ĳ'}, {u'ĺ', u'Ĺ'}, {u'ň', u'Ň'}, {u'ŋ', u'Ŋ'},
        {u'ŷ', u'Ŷ'}, {u'ź', u'Ź'}, {u'ž', u'Ž'}, {u'α', u'Α'}, {u'ω', u'Ω'},
        {u'а', u'А'}, {u'я', u'Я'}, {u'ё', u'Ё'}, {u'џ', u'Џ'}};
    for (const auto& [lower, upper] : pairs) {
        EXPECT_EQ(SimpleUpperCase(lower), upper) << int(lower);
        EXPECT_EQ(SimpleUpperCase(upper), upper) << int(upper);
    }
    for (char16_t unchanged : {u'0', u'\\', u'÷', u'µ', u'ı', u'ĸ', u'ŉ', u'ς', u'€'}) {
        EXPECT_EQ(SimpleUpperCase(unchanged), unchanged) << int(unchanged);
    }
    EXPECT_TRUE(EqualsIgnoringCase(u"C:\\Données", u"c:\\DONNÉES"));
    EXPECT_FALSE(EqualsIgnoringCase(u"C:\\Data", u"C:\\Dat"));
    EXPECT_TRUE(StartsWithIgnoringCase(u"C:\\ДАННЫЕ\\x", u"c:\\данные\\"));
    EXPECT_FALSE(StartsWithIgnoringCase(u"C:\\", u"C:\\Data"));
}

}  // namespace
}  // namespace slib
