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

class PathParse : public ::testing::Test {
  protected:
    std::u16string parse(const std::u16string& text) {
        return Path::Parse(text, anchor, system)->text();
    }

    testing::FakePathSystem system;
    Path anchor{u"C:\\Data\\"};
};

TEST_F(PathParse, AbsoluteFormsAreTakenWithoutCanonicalising) {
    EXPECT_EQ(parse(u"C:/Data/a.txt"), u"C:\\Data\\a.txt");
    EXPECT_EQ(parse(u"C:\\Data\\a.txt"), u"C:\\Data\\a.txt");
    EXPECT_EQ(parse(u"D:\\"), u"D:\\");
    EXPECT_EQ(parse(u"C:\\Data\\.\\x"), u"C:\\Data\\.\\x");
    EXPECT_EQ(system.lastCanonicalized, std::nullopt);
}

TEST_F(PathParse, RootedPathsGoToDriveC) {
    EXPECT_EQ(parse(u"\\Data\\a.txt"), u"C:\\Data\\a.txt");
    EXPECT_EQ(parse(u"/Data/a.txt"), u"C:\\Data\\a.txt");
    EXPECT_EQ(parse(u"\\"), u"C:\\");
}

TEST_F(PathParse, UrlFormLosesItsPrefix) {
    EXPECT_EQ(parse(u"file://C:/x"), u"C:\\x");
    EXPECT_EQ(parse(u"file:\\\\C:\\Data\\a b.txt"), u"C:\\Data\\a b.txt");
}

TEST_F(PathParse, HostSyntaxWithoutVolumeIsRelative) {
    // One slash after "file:" is not the URL form: the text is joined like any relative name.
    EXPECT_EQ(parse(u"file:/NoSuchVolume/a.txt"), u"C:\\Data\\file:\\NoSuchVolume\\a.txt");
    EXPECT_EQ(system.lastCanonicalized, u"C:\\Data\\file:\\NoSuchVolume\\a.txt");
}

TEST_F(PathParse, ShortFormIsExpanded) {
    system.longNames[u"C:\\PROGRA~1"] = u"C:\\Program Files";
    EXPECT_EQ(parse(u"fsspec:C:\\PROGRA~1"), u"C:\\Program Files");
    EXPECT_EQ(parse(u"fsspec:C:/PROGRA~1"), u"C:\\Program Files");
    EXPECT_EQ(parse(u"fsspec:C:\\NOSUCH~1"), u"") << "an unknown short form gives an empty path";
}

TEST_F(PathParse, DotIsTheAnchorItself) {
    EXPECT_EQ(parse(u"."), u"C:\\Data\\");
    EXPECT_EQ(Path::Parse(u".", Path(u"C:\\Data"), system)->text(), u"C:\\Data");
}

TEST_F(PathParse, TildeIsTheProfileFolder) {
    EXPECT_EQ(parse(u"~\\Documents"), u"C:\\Users\\ada\\Documents");
    EXPECT_EQ(parse(u"~"), u"C:\\Users\\ada");
    // The profile rule comes before slash replacement: the rest is kept as typed.
    EXPECT_EQ(parse(u"~/Documents"), u"C:\\Users\\ada/Documents");
}

TEST_F(PathParse, RelativeNamesJoinTheAnchor) {
    EXPECT_EQ(parse(u"a.txt"), u"C:\\Data\\a.txt");
    EXPECT_EQ(parse(u"sub/b.txt"), u"C:\\Data\\sub\\b.txt");
    EXPECT_EQ(Path::Parse(u"a.txt", Path(u"C:\\Data"), system)->text(), u"C:\\Data\\a.txt");
    EXPECT_EQ(system.lastCanonicalized, u"C:\\Data\\a.txt");
}

TEST_F(PathParse, LeadingStepsNeverClimbAboveADriveRootedAnchor) {
    EXPECT_EQ(parse(u"..\\b.txt"), u"C:\\Data\\b.txt");
    EXPECT_EQ(parse(u"../b.txt"), u"C:\\Data\\b.txt");
    EXPECT_EQ(parse(u"..\\..\\..\\b.txt"), u"C:\\Data\\b.txt");
    EXPECT_EQ(parse(u".\\a.txt"), u"C:\\Data\\a.txt");
    EXPECT_EQ(parse(u".\\..\\.\\..\\b.txt"), u"C:\\Data\\b.txt");
}

TEST_F(PathParse, StepsInsideTheNameAreLeftToCanonicalisation) {
    system.canonicalForms[u"C:\\Data\\sub\\..\\b.txt"] = u"C:\\Data\\b.txt";
    EXPECT_EQ(parse(u"sub\\..\\b.txt"), u"C:\\Data\\b.txt");
    EXPECT_EQ(system.lastCanonicalized, u"C:\\Data\\sub\\..\\b.txt");
}

TEST_F(PathParse, ParentStepCutsOnlyWithinTheFirstTwoCharacters) {
    // The backward search for "\" starts at index 1, so a UNC base loses all but its first "\".
    EXPECT_EQ(Path::Parse(u"..\\x", Path(u"\\\\srv\\share\\"), system)->text(), u"\\x");
    EXPECT_EQ(Path::Parse(u"..\\x", Path(u"\\q\\"), system)->text(), u"x");
}

TEST_F(PathParse, TooLongToCanonicaliseIsKeptWhole) {
    const std::u16string longName(300, u'n');
    system.uncanonicalisable.insert(u"C:\\Data\\" + longName);
    EXPECT_EQ(parse(longName), u"C:\\Data\\" + longName);
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

TEST_F(PathParse, TextIsHeldVerbatimWhenConstructedDirectly) {
    EXPECT_EQ(Path(u"any/thing").text(), u"any/thing");
    EXPECT_EQ(Path(u"C:\\x").description()->units(), u"C:\\x");
}

}  // namespace
}  // namespace slib
