// Formatting a native path in every output style, and the case folding relative styles use.

#include <gtest/gtest.h>

#include <string>

#include "fake_path_system.h"
#include "foundation/case_fold.h"
#include "foundation/path.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace {

class PathFormat : public ::testing::Test {
  protected:
    std::u16string format(const std::u16string& path, int style) {
        return Path(path).format(style, anchor, system)->units();
    }

    testing::FakePathSystem system;
    Path anchor{u"C:\\Data\\"};
};

TEST_F(PathFormat, NativeStyleIsTheTextAsHeld) {
    EXPECT_EQ(format(u"C:\\Data\\a.txt", 0), u"C:\\Data\\a.txt");
    EXPECT_EQ(format(u"C:\\Data\\", 0), u"C:\\Data\\") << "no trailing-separator rule";
}

TEST_F(PathFormat, UnixStyleDropsTheDrive) {
    EXPECT_EQ(format(u"C:\\Data\\a.txt", 1), u"/Data/a.txt");
    EXPECT_EQ(format(u"C:\\Data\\", 1), u"/Data");
    EXPECT_EQ(format(u"C:\\", 1), u"/");
    EXPECT_EQ(format(u"C:", 1), u"");
    EXPECT_EQ(format(u"", 1), u"");
}

TEST_F(PathFormat, WindowsStyleLosesOneTrailingSeparatorExceptAtTheRoot) {
    EXPECT_EQ(format(u"C:\\Data\\a.txt", 2), u"C:\\Data\\a.txt");
    EXPECT_EQ(format(u"C:\\Data\\", 2), u"C:\\Data");
    EXPECT_EQ(format(u"C:\\Data\\\\", 2), u"C:\\Data\\");
    EXPECT_EQ(format(u"C:\\", 2), u"C:\\");
    EXPECT_EQ(format(u"C:\\/", 2), u"C:") << "four characters: both separators go";
}

TEST_F(PathFormat, UrlStyle) {
    EXPECT_EQ(format(u"C:\\Data\\a.txt", 4), u"file://C:/Data/a.txt");
    EXPECT_EQ(format(u"C:\\Data\\", 4), u"file://C:/Data");
    EXPECT_EQ(format(u"C:\\", 4), u"file://C:");
}

TEST_F(PathFormat, ShortStyleFallsBackToThePathAsGiven) {
    system.shortNames[u"C:\\Program Files\\"] = u"C:\\PROGRA~1\\";
    EXPECT_EQ(format(u"C:\\Program Files\\", 5), u"C:\\PROGRA~1");
    EXPECT_EQ(format(u"C:\\No Such Folder\\", 5), u"C:\\No Such Folder");
}

TEST_F(PathFormat, HostStyleMarksFolders) {
    system.folders = {u"C:\\Data\\Sub", u"C:\\Data\\", u"C:\\"};
    EXPECT_EQ(format(u"C:\\Data\\a.txt", 7), u"file:/C:/Data/a.txt");
    EXPECT_EQ(format(u"C:\\Data\\Sub", 7), u"file:/C:/Data/Sub/");
    EXPECT_EQ(format(u"C:\\Data\\", 7), u"file:/C:/Data/");
    EXPECT_EQ(format(u"C:\\", 7), u"file:/C:/");
    EXPECT_EQ(format(u"C:\\Data\\gone\\", 7), u"file:/C:/Data/gone/") << "kept as held";
}

TEST_F(PathFormat, RelativeStylesInsideTheAnchor) {
    EXPECT_EQ(format(u"C:\\Data\\a.txt", 16), u"a.txt");
    EXPECT_EQ(format(u"C:\\Data\\sub\\b.txt", 16), u"sub\\b.txt");
    EXPECT_EQ(format(u"C:\\Data\\sub\\b.txt", 17), u"sub/b.txt");
    EXPECT_EQ(format(u"C:\\Data\\sub\\b.txt", 18), u"sub\\b.txt");
    EXPECT_EQ(format(u"C:\\Data\\sub\\", 18), u"sub");
    EXPECT_EQ(format(u"c:\\dATA\\A.TXT", 16), u"A.TXT") << "anchor matched without case";
}

TEST_F(PathFormat, RelativeStylesForTheAnchorItself) {
    EXPECT_EQ(format(u"C:\\Data\\", 16), u".");
    EXPECT_EQ(format(u"C:\\Data", 17), u".");
    const Path anchorWithoutSeparator(u"C:\\Data");
    EXPECT_EQ(Path(u"C:\\Data\\a.txt").format(16, anchorWithoutSeparator, system)->units(),
              u"a.txt");
    EXPECT_EQ(Path(u"C:\\x").format(16, Path(u"C:\\"), system)->units(), u"x");
}

TEST_F(PathFormat, RelativeStylesOutsideTheAnchorGiveTheFullPath) {
    EXPECT_EQ(format(u"C:\\Other\\a.txt", 16), u"C:\\Other\\a.txt");
    EXPECT_EQ(format(u"C:\\Other\\a.txt", 17), u"C:/Other/a.txt");
    EXPECT_EQ(format(u"C:\\Other\\", 18), u"C:\\Other");
    EXPECT_EQ(format(u"C:\\Database\\a.txt", 16), u"C:\\Database\\a.txt")
        << "a sibling sharing the anchor's name as prefix is not inside it";
    EXPECT_EQ(format(u"C:\\", 16), u"C:\\");
    const Path noAnchor(Path::kDefaultAnchor);
    EXPECT_EQ(Path(u"C:\\Data\\a.txt").format(17, noAnchor, system)->units(), u"C:/Data/a.txt");
}

TEST_F(PathFormat, UnknownStylesAreNativeWithTheTrailingRule) {
    for (int style : {3, 6, 8, 15, 19, 20, 23, 32, -1, 1000}) {
        EXPECT_EQ(format(u"C:\\Data\\", style), u"C:\\Data") << style;
        EXPECT_EQ(format(u"C:\\", style), u"C:\\") << style;
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
}

TEST(CaseFold, ComparesWholeTextsAndPrefixes) {
    EXPECT_TRUE(EqualsIgnoringCase(u"C:\\Données", u"c:\\DONNÉES"));
    EXPECT_FALSE(EqualsIgnoringCase(u"C:\\Data", u"C:\\Dat"));
    EXPECT_TRUE(StartsWithIgnoringCase(u"C:\\ДАННЫЕ\\x", u"c:\\данные\\"));
    EXPECT_FALSE(StartsWithIgnoringCase(u"C:\\", u"C:\\Data"));
}

}  // namespace
}  // namespace slib
