// Resolved paths as result text in each output style, against the anchor C:\Data\.
#include <windows.h>

#include "bridge_fixture.h"
#include "file_manager/scratch_folder.h"

namespace bridge_test {
namespace {

using slib::PathStyle;

struct Styled {
    std::u16string input;
    int style;
    std::u16string text;
};

void ExpectStyled(const slib::Path& anchor, std::initializer_list<Styled> cases) {
    for (const Styled& c : cases) {
        EXPECT_EQ(Narrow(Resolve(anchor, c.input, c.style)), Narrow(c.text))
            << "input: " << Narrow(c.input) << ", style " << c.style;
    }
}

class OutputStyles : public BridgeTest {};

TEST_F(OutputStyles, FullForms) {
    ExpectStyled(Anchor(), {
                               {u"a.txt", PathStyle::kNative, u"C:\\Data\\a.txt"},
                               {u"file:/C:/Data/a.txt", PathStyle::kWindows, u"C:\\Data\\a.txt"},
                               {u"a.txt", PathStyle::kUnix, u"/Data/a.txt"},
                               {u"a.txt", PathStyle::kUrl, u"file://C:/Data/a.txt"},
                               // Styles without a form of their own give the native one.
                               {u"a.txt", 3, u"C:\\Data\\a.txt"},
                               {u"a.txt", 9, u"C:\\Data\\a.txt"},
                           });
}

TEST_F(OutputStyles, OnlyRootsOfThreeCharactersOrFewerKeepTheirSeparator) {
    ExpectStyled(Anchor(), {
                               // The native style gives the path exactly as held.
                               {u".", PathStyle::kNative, u"C:\\Data\\"},
                               {u"C:\\", PathStyle::kNative, u"C:\\"},
                               {u".", PathStyle::kWindows, u"C:\\Data"},
                               {u"C:\\", PathStyle::kWindows, u"C:\\"},
                               {u".", PathStyle::kUnix, u"/Data"},
                               {u"C:\\", PathStyle::kUnix, u"/"},
                               // "file://C:/" is longer than three characters: it loses its "/".
                               {u"C:\\", PathStyle::kUrl, u"file://C:"},
                               {u"sub\\", PathStyle::kRelative | PathStyle::kNative, u"sub"},
                           });
}

TEST_F(OutputStyles, RelativeFormsBelowTheAnchor) {
    ExpectStyled(
        Anchor(),
        {
            {u"sub/a.txt", PathStyle::kRelative | PathStyle::kNative, u"sub\\a.txt"},
            {u"sub/a.txt", PathStyle::kRelative | PathStyle::kUnix, u"sub/a.txt"},
            {u"sub/a.txt", PathStyle::kRelative | PathStyle::kWindows, u"sub\\a.txt"},
            {u".", PathStyle::kRelative | PathStyle::kNative, u"."},
            {u"C:\\Data", PathStyle::kRelative | PathStyle::kUnix, u"."},
            // The anchor is found without regard to case.
            {u"c:\\DATA\\Sub\\b.txt", PathStyle::kRelative | PathStyle::kNative, u"Sub\\b.txt"},
        });
}

TEST_F(OutputStyles, RelativeFormsOfPathsElsewhereGiveTheFullPathInThatForm) {
    ExpectStyled(
        Anchor(),
        {
            {u"C:\\Other\\a.txt", PathStyle::kRelative | PathStyle::kNative, u"C:\\Other\\a.txt"},
            {u"C:\\Other\\a.txt", PathStyle::kRelative | PathStyle::kUnix, u"C:/Other/a.txt"},
            {u"C:\\Other\\a.txt", PathStyle::kRelative | PathStyle::kWindows, u"C:\\Other\\a.txt"},
            // Sharing the anchor's first letters is not lying under it.
            {u"C:\\Database\\a.txt", PathStyle::kRelative | PathStyle::kNative,
             u"C:\\Database\\a.txt"},
            {u"C:\\", PathStyle::kRelative | PathStyle::kUnix, u"C:/"},
        });
    // Without an anchor folder nothing lies below it.
    ExpectStyled(
        slib::Path(slib::Path::kDefaultAnchor),
        {
            {u"C:\\Data\\a.txt", PathStyle::kRelative | PathStyle::kUnix, u"C:/Data/a.txt"},
        });
}

// The short and host styles ask the file system: they need items that exist.
class SystemStyles : public slib::test::ScratchTest {
  protected:
    void SetUp() override {
        ScratchTest::SetUp();
        ASSERT_TRUE(host_.SetFile(kFmhostFileLocal, kDatabase));
        makeFolder(u"A Folder With A Long Name");
        writeFile(u"A Folder With A Long Name\\A Long File Name.txt", "x");
    }
    fmhost::driver::Host host_;
};

std::u16string HostForm(std::u16string native) {
    for (char16_t& unit : native) {
        if (unit == u'\\') {
            unit = u'/';
        }
    }
    return u"file:/" + native;
}

TEST_F(SystemStyles, HostSyntaxMarksFoldersWithATrailingSlash) {
    const std::u16string folder = path(u"A Folder With A Long Name");
    const std::u16string file = folder + u"\\A Long File Name.txt";
    ExpectStyled(Anchor(), {
                               {folder, PathStyle::kHost, HostForm(folder) + u"/"},
                               {folder + u"\\", PathStyle::kHost, HostForm(folder) + u"/"},
                               {file, PathStyle::kHost, HostForm(file)},
                               {path(u"missing"), PathStyle::kHost, HostForm(path(u"missing"))},
                               {HostForm(file), PathStyle::kHost, HostForm(file)},
                           });
}

TEST_F(SystemStyles, ShortStyleGivesTheSystemsShortForm) {
    const std::u16string file = path(u"A Folder With A Long Name\\A Long File Name.txt");
    wchar_t shortForm[MAX_PATH];
    ASSERT_GT(GetShortPathNameW(slib::test::Wide(file), shortForm, MAX_PATH), 0u);
    ExpectStyled(Anchor(),
                 {
                     {file, PathStyle::kShort, FromWide(shortForm)},
                     // An item without a short form (here: none at all) keeps its path.
                     {path(u"missing name.txt"), PathStyle::kShort, path(u"missing name.txt")},
                 });
}

}  // namespace
}  // namespace bridge_test
