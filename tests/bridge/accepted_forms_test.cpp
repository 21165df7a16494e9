// Every form a path argument may take, resolved against the anchor C:\Data\.
#include <shlobj.h>
#include <windows.h>

#include "bridge_fixture.h"
#include "file_manager/scratch_folder.h"

namespace bridge_test {
namespace {

struct Form {
    std::u16string input;
    std::u16string resolved;
};

void ExpectResolved(const slib::Path& anchor, std::initializer_list<Form> forms) {
    for (const Form& form : forms) {
        EXPECT_EQ(Narrow(Resolve(anchor, form.input)), Narrow(form.resolved))
            << "input: " << Narrow(form.input);
    }
}

// A drive letter with no volume behind it.
std::u16string UnusedDrive() {
    const DWORD used = GetLogicalDrives();
    for (char16_t letter = u'Q'; letter <= u'Y'; ++letter) {
        if ((used & (1u << (letter - u'A'))) == 0) {
            return std::u16string(1, letter) + u":";
        }
    }
    return u"";
}

class AcceptedForms : public BridgeTest {
  protected:
    void expect(std::initializer_list<Form> forms) const { ExpectResolved(Anchor(), forms); }
};

TEST_F(AcceptedForms, HostSyntaxNeedsAVolumeAfterItsPrefix) {
    const std::u16string unused = UnusedDrive();
    ASSERT_FALSE(unused.empty());
    expect({
        {u"file:/C:/Data/a.txt", u"C:\\Data\\a.txt"},
        {u"filemac:/C:/x", u"C:\\x"},
        {u"/C:/Data/a.txt", u"C:\\Data\\a.txt"},
        {u"file:/C:/", u"C:\\"},
        // Drive letters are matched without regard to case, and kept as typed.
        {u"file:/c:/Data/a.txt", u"c:\\Data\\a.txt"},
        // No such volume: the text is kept and then read as a relative path.
        {u"file:/NoSuchVolume/a.txt", u"C:\\Data\\file:\\NoSuchVolume\\a.txt"},
        {u"file:/" + unused + u"/a.txt", u"C:\\Data\\file:\\" + unused + u"\\a.txt"},
        {u"a/b/c.txt", u"C:\\Data\\a\\b\\c.txt"},
    });
}

TEST_F(AcceptedForms, NativeAbsoluteAndUrlForms) {
    expect({
        {u"C:/Data/a.txt", u"C:\\Data\\a.txt"},
        {u"C:\\Data\\a.txt", u"C:\\Data\\a.txt"},
        {u"\\Data\\a.txt", u"C:\\Data\\a.txt"},
        {u"/Data/a.txt", u"C:\\Data\\a.txt"},
        {u"file://C:/x", u"C:\\x"},
        {u"file://C:/Data/a.txt", u"C:\\Data\\a.txt"},
    });
}

TEST_F(AcceptedForms, RelativeFormsStayInsideTheAnchor) {
    expect({
        {u".", u"C:\\Data\\"},
        {u"a.txt", u"C:\\Data\\a.txt"},
        {u".\\a.txt", u"C:\\Data\\a.txt"},
        {u"sub/../b.txt", u"C:\\Data\\b.txt"},
        // Leading parent steps never climb above a drive-rooted anchor.
        {u"..\\b.txt", u"C:\\Data\\b.txt"},
        {u"../../b.txt", u"C:\\Data\\b.txt"},
    });
}

TEST_F(AcceptedForms, ProfileFolderForms) {
    wchar_t profile[MAX_PATH];
    ASSERT_EQ(SHGetFolderPathW(nullptr, CSIDL_PROFILE, nullptr, 0, profile), S_OK);
    const std::u16string home = FromWide(profile);
    expect({{u"~\\Documents", home + u"\\Documents"}, {u"~", home}, {u"~/x", home + u"/x"}});
}

// Short names need an item that exists: one with a long name in a scratch folder.
class ShortForms : public slib::test::ScratchTest {
  protected:
    fmhost::driver::Host host_;
};

TEST_F(ShortForms, ShortFormsAreExpandedToTheirLongForm) {
    ASSERT_TRUE(host_.SetFile(kFmhostFileLocal, kDatabase));
    makeFolder(u"A Folder With A Long Name");
    const std::u16string longForm = path(u"A Folder With A Long Name");
    wchar_t shortForm[MAX_PATH];
    ASSERT_GT(GetShortPathNameW(slib::test::Wide(longForm), shortForm, MAX_PATH), 0u);
    ExpectResolved(Anchor(), {
                                 {u"fsspec:" + FromWide(shortForm), longForm},
                                 // A short form the system cannot expand gives an empty path.
                                 {u"fsspec:" + path(u"missing"), u""},
                             });
}

TEST_F(AcceptedForms, RefusedForms) {
    EXPECT_EQ(FailureOf([&] { resolve(u"fmnet:/host/db"); }),
              "-50 FileMaker network path cannot be used");
    EXPECT_EQ(FailureOf([&] { resolve(u""); }), "-43 Empty string is not valid path");
}

TEST_F(AcceptedForms, WithoutAnAnchorFolderOnlyAbsoluteFormsResolve) {
    const slib::Path none(slib::Path::kDefaultAnchor);
    EXPECT_EQ(FailureOf([&] { Resolve(none, u"a.txt"); }),
              "-50 Relative paths are not supported in Webdirect.");
    EXPECT_EQ(FailureOf([&] { Resolve(none, u"..\\a.txt"); }),
              "-50 Relative paths are not supported in Webdirect.");
    EXPECT_EQ(Narrow(Resolve(none, u"file:/C:/Data/a.txt")), "C:\\Data\\a.txt");
    EXPECT_EQ(Narrow(Resolve(none, u"\\a.txt")), "C:\\a.txt");
}

}  // namespace
}  // namespace bridge_test
