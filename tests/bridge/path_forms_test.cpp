// Every form a path argument may take, and the result text of each output style, resolved
// against the anchor C:\Data\.
#include <shlobj.h>
#include <windows.h>

#include "bridge_fixture.h"
#include "foundation/file_manager.h"

namespace bridge_test {
namespace {

using slib::PathStyle;
constexpr int kRelative = PathStyle::kRelative;

struct Form {
    std::u16string input;
    std::u16string text;
    int style = PathStyle::kNative;
};

void ExpectResolved(const slib::Path& anchor, std::initializer_list<Form> forms) {
    for (const Form& form : forms) {
        EXPECT_EQ(Narrow(Resolve(anchor, form.input, form.style)), Narrow(form.text))
            << "input: " << Narrow(form.input) << ", style " << form.style;
    }
}

TEST_F(BridgeTest, AcceptedFormsResolveAgainstTheAnchor) {
    const std::u16string unused{slib::ChooseFreeDriveLetter(GetLogicalDrives()), u':'};
    wchar_t profile[MAX_PATH];
    ASSERT_EQ(SHGetFolderPathW(nullptr, CSIDL_PROFILE, nullptr, 0, profile), S_OK);
    const std::u16string home = FromWide(profile);
    ExpectResolved(Anchor(),
                   {
                       // Host syntax needs a volume after its prefix.
                       {u"file:/C:/Data/a.txt", u"C:\\Data\\a.txt"},
                       {u"filemac:/C:/x", u"C:\\x"},
                       {u"/C:/Data/a.txt", u"C:\\Data\\a.txt"},
                       {u"file:/C:/", u"C:\\"},
                       // Drive letters are matched without regard to case, and kept as typed.
                       {u"file:/c:/Data/a.txt", u"c:\\Data\\a.txt"},
                       // No such volume: the text is kept and then read as a relative path.
                       {u"file:/NoSuchVolume/a.txt", u"C:\\Data\\file:\\NoSuchVolume\\a.txt"},
                       // A drive letter not mounted here is still that drive.
                       {u"file:/" + unused + u"/a.txt", unused + u"\\a.txt"},
                       {u"a/b/c.txt", u"C:\\Data\\a\\b\\c.txt"},
                       // Native absolute and URL forms.
                       {u"C:/Data/a.txt", u"C:\\Data\\a.txt"},
                       {u"C:\\Data\\a.txt", u"C:\\Data\\a.txt"},
                       {u"\\Data\\a.txt", u"C:\\Data\\a.txt"},
                       {u"/Data/a.txt", u"C:\\Data\\a.txt"},
                       {u"file://C:/x", u"C:\\x"},
                       {u"file://C:/Data/a.txt", u"C:\\Data\\a.txt"},
                       // Relative forms stay inside the anchor.
                       {u".", u"C:\\Data"},
                       {u"a.txt", u"C:\\Data\\a.txt"},
                       {u".\\a.txt", u"C:\\Data\\a.txt"},
                       {u"sub/../b.txt", u"C:\\Data\\b.txt"},
                       // Leading parent steps never climb above a drive-rooted anchor.
                       {u"..\\b.txt", u"C:\\Data\\b.txt"},
                       {u"../../b.txt", u"C:\\Data\\b.txt"},
                       // The profile folder.
                       {u"~\\Documents", home + u"\\Documents"},
                       {u"~", home},
                       {u"~/x", home + u"\\x"},
                   });
    // Without an anchor folder only absolute forms resolve.
    ExpectResolved(slib::Path(slib::Path::kDefaultAnchor),
                   {{u"file:/C:/Data/a.txt", u"C:\\Data\\a.txt"}, {u"\\a.txt", u"C:\\a.txt"}});
}

TEST_F(BridgeTest, RefusedForms) {
    const slib::Path none(slib::Path::kDefaultAnchor);
    const std::string relative = "-50 Relative paths are not supported in Webdirect.";
    EXPECT_EQ(FailureOf([&] { resolve(u"fmnet:/host/db"); }),
              "-50 FileMaker network path cannot be used");
    EXPECT_EQ(FailureOf([&] { resolve(u""); }), "-43 Empty string is not valid path");
    EXPECT_EQ(FailureOf([&] { Resolve(none, u"a.txt"); }), relative);
    EXPECT_EQ(FailureOf([&] { Resolve(none, u"..\\a.txt"); }), relative);
}

TEST_F(BridgeTest, OutputStyles) {
    ExpectResolved(
        Anchor(),
        {
            {u"a.txt", u"C:\\Data\\a.txt", PathStyle::kNative},
            {u"file:/C:/Data/a.txt", u"C:\\Data\\a.txt", PathStyle::kWindows},
            {u"a.txt", u"/Data/a.txt", PathStyle::kUnix},
            {u"a.txt", u"file://C:/Data/a.txt", PathStyle::kUrl},
            // Styles without a form of their own give the native one.
            {u"a.txt", u"C:\\Data\\a.txt", 3},
            {u"a.txt", u"C:\\Data\\a.txt", 9},
            // Paths are held in normal form: only a root keeps its separator.
            {u".", u"C:\\Data", PathStyle::kNative},
            {u"C:\\", u"C:\\", PathStyle::kNative},
            {u".", u"C:\\Data", PathStyle::kWindows},
            {u"C:\\", u"C:\\", PathStyle::kWindows},
            {u".", u"/Data", PathStyle::kUnix},
            {u"C:\\", u"/", PathStyle::kUnix},
            // "file://C:/" is longer than three characters: it loses its "/".
            {u"C:\\", u"file://C:", PathStyle::kUrl},
            {u"sub\\", u"sub", kRelative | PathStyle::kNative},
            // Relative forms below the anchor.
            {u"sub/a.txt", u"sub\\a.txt", kRelative | PathStyle::kNative},
            {u"sub/a.txt", u"sub/a.txt", kRelative | PathStyle::kUnix},
            {u"sub/a.txt", u"sub\\a.txt", kRelative | PathStyle::kWindows},
            {u".", u".", kRelative | PathStyle::kNative},
            {u"C:\\Data", u".", kRelative | PathStyle::kUnix},
            // The anchor is found without regard to case.
            {u"c:\\DATA\\Sub\\b.txt", u"Sub\\b.txt", kRelative | PathStyle::kNative},
            // Relative forms of paths elsewhere give the full path in that form.
            {u"C:\\Other\\a.txt", u"C:\\Other\\a.txt", kRelative | PathStyle::kNative},
            {u"C:\\Other\\a.txt", u"C:/Other/a.txt", kRelative | PathStyle::kUnix},
            {u"C:\\Other\\a.txt", u"C:\\Other\\a.txt", kRelative | PathStyle::kWindows},
            // Sharing the anchor's first letters is not lying under it.
            {u"C:\\Database\\a.txt", u"C:\\Database\\a.txt", kRelative | PathStyle::kNative},
            {u"C:\\", u"C:/", kRelative | PathStyle::kUnix},
        });
    // Without an anchor folder nothing lies below it.
    ExpectResolved(slib::Path(slib::Path::kDefaultAnchor),
                   {{u"C:\\Data\\a.txt", u"C:/Data/a.txt", kRelative | PathStyle::kUnix}});
}

// Short forms and the host style ask the file system: they need items that exist.
class SystemForms : public slib::test::ScratchTest {
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
        unit = unit == u'\\' ? u'/' : unit;
    }
    return u"file:/" + native;
}

TEST_F(SystemForms, ShortFormsInAndOutAndHostSyntaxMarkingFolders) {
    const std::u16string folder = path(u"A Folder With A Long Name");
    const std::u16string file = folder + u"\\A Long File Name.txt";
    wchar_t shortFolder[MAX_PATH];
    wchar_t shortFile[MAX_PATH];
    ASSERT_GT(GetShortPathNameW(Wide(folder), shortFolder, MAX_PATH), 0u);
    ASSERT_GT(GetShortPathNameW(Wide(file), shortFile, MAX_PATH), 0u);
    ExpectResolved(Anchor(),
                   {
                       {u"fsspec:" + FromWide(shortFolder), folder},
                       // A short form the system cannot expand gives an empty path.
                       {u"fsspec:" + path(u"missing"), u""},
                       {file, FromWide(shortFile), PathStyle::kShort},
                       // An item without a short form (here: none at all) keeps its path.
                       {path(u"missing name.txt"), path(u"missing name.txt"), PathStyle::kShort},
                       {folder, HostForm(folder) + u"/", PathStyle::kHost},
                       {folder + u"\\", HostForm(folder) + u"/", PathStyle::kHost},
                       {file, HostForm(file), PathStyle::kHost},
                       {path(u"missing"), HostForm(path(u"missing")), PathStyle::kHost},
                       {HostForm(file), HostForm(file), PathStyle::kHost},
                   });
}

}  // namespace
}  // namespace bridge_test
