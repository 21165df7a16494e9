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
    const char16_t* canonicalised;  // what reached the system's canonicalisation; null: unchecked
};

constexpr const char16_t* kUntouched = u"(not canonicalised)";

constexpr const char16_t* kData = u"C:\\Data\\";
const std::u16string kLongName(300, u'n');

// Absolute forms are taken without canonicalising; rooted ones go to drive C; the URL form loses
// its prefix, but one slash after "file:" is a relative name. Short forms are expanded (an unknown
// one is empty). "." is the anchor, "~" the profile (before slash replacement). Leading steps
// never climb above a drive-rooted anchor; steps inside the name are left to canonicalisation.
// The backward search for "\" starts at index 1: a UNC base loses all but its first "\".
const ParseCase kParseCases[] = {
    {u"C:/Data/a.txt", kData, u"C:\\Data\\a.txt", kUntouched},
    {u"C:\\Data\\a.txt", kData, u"C:\\Data\\a.txt", kUntouched},
    {u"D:\\", kData, u"D:\\", kUntouched},
    {u"C:\\Data\\.\\x", kData, u"C:\\Data\\.\\x", kUntouched},
    {u"\\Data\\a.txt", kData, u"C:\\Data\\a.txt", nullptr},
    {u"/Data/a.txt", kData, u"C:\\Data\\a.txt", nullptr},
    {u"\\", kData, u"C:\\", nullptr},
    {u"file://C:/x", kData, u"C:\\x", nullptr},
    {u"file:\\\\C:\\Data\\a b.txt", kData, u"C:\\Data\\a b.txt", nullptr},
    {u"file:/NoSuchVolume/a.txt", kData, u"C:\\Data\\file:\\NoSuchVolume\\a.txt",
     u"C:\\Data\\file:\\NoSuchVolume\\a.txt"},
    {u"fsspec:C:\\PROGRA~1", kData, u"C:\\Program Files", nullptr},
    {u"fsspec:C:/PROGRA~1", kData, u"C:\\Program Files", nullptr},
    {u"fsspec:C:\\NOSUCH~1", kData, u"", nullptr},
    {u".", kData, u"C:\\Data\\", nullptr},
    {u".", u"C:\\Data", u"C:\\Data", nullptr},
    {u"~\\Documents", kData, u"C:\\Users\\ada\\Documents", nullptr},
    {u"~", kData, u"C:\\Users\\ada", nullptr},
    {u"~/Documents", kData, u"C:\\Users\\ada/Documents", nullptr},
    {u"a.txt", kData, u"C:\\Data\\a.txt", u"C:\\Data\\a.txt"},
    {u"sub/b.txt", kData, u"C:\\Data\\sub\\b.txt", u"C:\\Data\\sub\\b.txt"},
    {u"a.txt", u"C:\\Data", u"C:\\Data\\a.txt", u"C:\\Data\\a.txt"},
    {u"..\\b.txt", kData, u"C:\\Data\\b.txt", nullptr},
    {u"../b.txt", kData, u"C:\\Data\\b.txt", nullptr},
    {u"..\\..\\..\\b.txt", kData, u"C:\\Data\\b.txt", nullptr},
    {u".\\a.txt", kData, u"C:\\Data\\a.txt", nullptr},
    {u".\\..\\.\\..\\b.txt", kData, u"C:\\Data\\b.txt", nullptr},
    {u"sub\\..\\b.txt", kData, u"C:\\Data\\b.txt", u"C:\\Data\\sub\\..\\b.txt"},
    {u"..\\x", u"\\\\srv\\share\\", u"\\x", nullptr},
    {u"..\\x", u"\\q\\", u"x", nullptr}};

class PathParse : public ::testing::TestWithParam<ParseCase> {
  protected:
    PathParse() {
        system.longNames[u"C:\\PROGRA~1"] = u"C:\\Program Files";
        system.canonicalForms[u"C:\\Data\\sub\\..\\b.txt"] = u"C:\\Data\\b.txt";
    }

    testing::FakePathSystem system;
};

TEST_P(PathParse, GivesTheNativePath) {
    const ParseCase& c = GetParam();
    EXPECT_EQ(Path::Parse(c.text, Path(c.anchor), system)->text(), c.expected)
        << ::testing::PrintToString(std::u16string(c.text));
    if (c.canonicalised != nullptr) {
        EXPECT_EQ(system.lastCanonicalized.value_or(kUntouched), c.canonicalised);
    }
}
INSTANTIATE_TEST_SUITE_P(EveryForm, PathParse, ::testing::ValuesIn(kParseCases));

TEST_F(PathParse, TooLongToCanonicaliseIsKeptWhole) {
    system.uncanonicalisable.insert(u"C:\\Data\\" + kLongName);
    EXPECT_EQ(Path::Parse(kLongName, Path(kData), system)->text(), u"C:\\Data\\" + kLongName);
}

TEST_F(PathParse, RelativeWithoutAnchorIsRefused) {
    const Path noAnchor(Path::kDefaultAnchor);
    EXPECT_TRUE(noAnchor.isDefaultAnchor());
    for (const char16_t* relative : {u"a.txt", u"..\\b.txt", u"file:/NoSuchVolume/a"}) {
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
}

TEST(PathText, IsHeldVerbatimWhenConstructedDirectly) {
    EXPECT_EQ(Path(u"any/thing").text(), u"any/thing");
    EXPECT_EQ(Path(u"C:\\x").description()->units(), u"C:\\x");
}

}  // namespace
}  // namespace slib
