// Turning user path text into a native path, against the anchor folder C:\Data\.

#include <gtest/gtest.h>

#include <string>

#include "fake_path_system.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/path.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace {

struct ParseCase {
    const char16_t* text;
    const char16_t* anchor;
    const char16_t* expected;
};

constexpr const char16_t* kData = u"C:\\Data\\";
constexpr const char16_t* kShare = u"\\\\srv\\share\\db\\";
const std::u16string kLongName(300, u'n');

// Every form comes out in one normal form: "\" separators, no "." or "..", no doubled or
// trailing separators. Absolute forms keep their drive or share; rooted ones take the anchor's
// drive or share; relative ones (and "C:x" on the anchor's drive) stay below the anchor, their
// ".." never climbing out of it. A ".." at a drive root or share is dropped.
const ParseCase kParseCases[] = {
    // drive-absolute, separators and dots
    {u"C:/Data/a.txt", kData, u"C:\\Data\\a.txt"},
    {u"C:\\Data\\a.txt", kData, u"C:\\Data\\a.txt"},
    {u"D:\\", kData, u"D:\\"},
    {u"D:", kData, u"D:\\"},
    {u"C:\\Data\\.\\x", kData, u"C:\\Data\\x"},
    {u"C:\\pt\\\\sub\\a.txt", kData, u"C:\\pt\\sub\\a.txt"},
    {u"C:\\pt/sub\\/a.txt", kData, u"C:\\pt\\sub\\a.txt"},
    {u"C:\\pt\\sub\\..\\a.txt", kData, u"C:\\pt\\a.txt"},
    {u"C:\\..\\..\\a.txt", kData, u"C:\\a.txt"},
    {u"C:\\pt\\sub\\", kData, u"C:\\pt\\sub"},
    {u"C:\\pt\\sub\\\\\\", kData, u"C:\\pt\\sub"},
    {u"C:\\pt\\a. ", kData, u"C:\\pt\\a. "},  // names are kept exactly
    // rooted: the anchor's drive or share
    {u"\\Data\\a.txt", kData, u"C:\\Data\\a.txt"},
    {u"/Data/a.txt", u"D:\\Data\\", u"D:\\Data\\a.txt"},
    {u"\\", kData, u"C:\\"},
    {u"\\x", kShare, u"\\\\srv\\share\\x"},
    // drive-relative: below the anchor on its drive, below the root elsewhere
    {u"C:a.txt", kData, u"C:\\Data\\a.txt"},
    {u"c:sub\\..\\a.txt", kData, u"C:\\Data\\a.txt"},
    {u"D:a.txt", kData, u"D:\\a.txt"},
    // UNC both ways, never on a drive
    {u"\\\\server\\share\\x", kData, u"\\\\server\\share\\x"},
    {u"//server/share/x", kData, u"\\\\server\\share\\x"},
    {u"\\\\server\\share\\..\\..\\x", kData, u"\\\\server\\share\\x"},
    {u"\\\\server\\share", kData, u"\\\\server\\share\\"},
    // already prefixed
    {u"\\\\?\\C:\\Data\\a.txt", kData, u"C:\\Data\\a.txt"},
    {u"\\\\?\\C:\\Data\\sub\\..\\a.txt", kData, u"C:\\Data\\a.txt"},
    {u"\\\\?\\UNC\\server\\share\\x", kData, u"\\\\server\\share\\x"},
    {u"//?/unc/server/share/x", kData, u"\\\\server\\share\\x"},
    // URL forms
    {u"file://C:/x", kData, u"C:\\x"},
    {u"file:///C:/x", kData, u"C:\\x"},
    {u"file:\\\\C:\\Data\\a b.txt", kData, u"C:\\Data\\a b.txt"},
    {u"file:////server/share/x", kData, u"\\\\server\\share\\x"},
    {u"file://server/share/x", kData, u"\\\\server\\share\\x"},
    {u"file:/NoSuchVolume/a.txt", kData, u"C:\\Data\\file:\\NoSuchVolume\\a.txt"},
    // short forms, "~" and "."
    {u"fsspec:C:\\PROGRA~1", kData, u"C:\\Program Files"},
    {u"fsspec:C:/PROGRA~1", kData, u"C:\\Program Files"},
    {u"fsspec:C:\\NOSUCH~1", kData, u""},
    {u".", kData, u"C:\\Data"},
    {u".", u"C:\\Data", u"C:\\Data"},
    {u"./", kData, u"C:\\Data"},
    {u"~\\Documents", kData, u"C:\\Users\\ada\\Documents"},
    {u"~", kData, u"C:\\Users\\ada"},
    {u"~/Documents/", kData, u"C:\\Users\\ada\\Documents"},
    // relative: below the anchor, never above it
    {u"a.txt", kData, u"C:\\Data\\a.txt"},
    {u"sub/b.txt", kData, u"C:\\Data\\sub\\b.txt"},
    {u"sub\\.", kData, u"C:\\Data\\sub"},
    {u"sub//b.txt", kData, u"C:\\Data\\sub\\b.txt"},
    {u"a.txt", u"C:\\Data", u"C:\\Data\\a.txt"},
    {u"..\\b.txt", kData, u"C:\\Data\\b.txt"},
    {u"../b.txt", kData, u"C:\\Data\\b.txt"},
    {u"..\\..\\..\\b.txt", kData, u"C:\\Data\\b.txt"},
    {u".\\a.txt", kData, u"C:\\Data\\a.txt"},
    {u".\\..\\.\\..\\b.txt", kData, u"C:\\Data\\b.txt"},
    {u"sub\\..\\b.txt", kData, u"C:\\Data\\b.txt"},
    {u"sub\\..\\..\\b.txt", kData, u"C:\\Data\\b.txt"},
    {u".\\~x.txt", kData, u"C:\\Data\\~x.txt"},
    {u"..\\x", kShare, u"\\\\srv\\share\\db\\x"},
    {u"x", u"\\\\?\\C:\\Data\\", u"C:\\Data\\x"}};

class PathParse : public ::testing::TestWithParam<ParseCase> {
  protected:
    PathParse() { system.longNames[u"C:\\PROGRA~1"] = u"C:\\Program Files"; }

    testing::FakePathSystem system;
};

TEST_P(PathParse, GivesTheNormalNativePath) {
    const ParseCase& c = GetParam();
    EXPECT_EQ(Path::Parse(c.text, Path(c.anchor), system)->text(), c.expected)
        << ::testing::PrintToString(std::u16string(c.text));
}
INSTANTIATE_TEST_SUITE_P(EveryForm, PathParse, ::testing::ValuesIn(kParseCases));

TEST_F(PathParse, LongPathsAreNormalisedWhole) {
    EXPECT_EQ(Path::Parse(kLongName + u"\\.\\x\\..\\y", Path(kData), system)->text(),
              u"C:\\Data\\" + kLongName + u"\\y");
}

TEST_F(PathParse, RelativeWithoutAnchorIsRefused) {
    const Path noAnchor(Path::kDefaultAnchor);
    EXPECT_TRUE(noAnchor.isDefaultAnchor());
    for (const char16_t* relative : {u"a.txt", u"..\\b.txt", u"file:/NoSuchVolume/a", u"."}) {
        try {
            Path::Parse(relative, noAnchor, system);
            ADD_FAILURE() << "accepted a relative path without anchor";
        } catch (const Exception& caught) {
            EXPECT_STREQ(caught.what(), "Relative paths are not supported in Webdirect.");
            EXPECT_EQ(caught.error()->code(), kBadParameter);
        }
    }
    // Everything that does not need the anchor still works.
    EXPECT_EQ(Path::Parse(u"C:/x", noAnchor, system)->text(), u"C:\\x");
    EXPECT_EQ(Path::Parse(u"~", noAnchor, system)->text(), u"C:\\Users\\ada");
    EXPECT_EQ(Path::Parse(u"\\x", noAnchor, system)->text(), u"C:\\x");
    EXPECT_EQ(Path::Parse(u"D:x", noAnchor, system)->text(), u"D:\\x");
    EXPECT_EQ(Path::Parse(u"//srv/share/x", noAnchor, system)->text(), u"\\\\srv\\share\\x");
}

TEST(PathText, IsHeldVerbatimWhenConstructedDirectly) {
    EXPECT_EQ(Path(u"any/thing").text(), u"any/thing");
    EXPECT_EQ(Path(u"C:\\x").description()->units(), u"C:\\x");
}

}  // namespace
}  // namespace slib
