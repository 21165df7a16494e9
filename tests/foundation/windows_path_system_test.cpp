// The real system queries behind slib::Path, on a real (or Wine's) file system.

#include <shlobj.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "foundation/case_fold.h"
#include "foundation/exception.h"
#include "foundation/path.h"
#include "foundation/path_system.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace {

std::u16string FromWide(const wchar_t* text) {
    return reinterpret_cast<const char16_t*>(text);
}
const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

const PathSystem& realSystem = DefaultPathSystem();

TEST(WindowsPathSystem, DefaultPathIsTheCurrentDirectory) {
    wchar_t current[MAX_PATH];
    ASSERT_NE(GetCurrentDirectoryW(MAX_PATH, current), 0u);
    EXPECT_EQ(realSystem.currentDirectory(), FromWide(current));
    EXPECT_EQ(Path().text(), FromWide(current));
}

TEST(WindowsPathSystem, TildeIsTheUserProfile) {
    wchar_t profile[MAX_PATH];
    ASSERT_EQ(SHGetFolderPathW(nullptr, CSIDL_PROFILE, nullptr, 0, profile), S_OK);
    EXPECT_EQ(realSystem.profileFolder(), FromWide(profile));
    EXPECT_NE(realSystem.profileFolder().back(), u'\\');
    EXPECT_EQ(Path::Parse(u"~\\Documents", Path(u"C:\\Data\\"))->text(),
              FromWide(profile) + u"\\Documents");
}

TEST(WindowsPathSystem, ResolvesDotsTextuallyAtAnyLength) {
    const std::u16string longName(300, u'n');
    const Path anchor(u"C:\\Data\\");
    EXPECT_EQ(Path::Parse(longName + u"\\..\\.\\x", anchor)->text(), u"C:\\Data\\x");
    EXPECT_EQ(Path::Parse(u"sub\\" + longName + u"\\.", anchor)->text(),
              u"C:\\Data\\sub\\" + longName);
    EXPECT_EQ(Path::Parse(u"sub\\.\\x", anchor)->text(), u"C:\\Data\\sub\\x");
    EXPECT_EQ(Path::Parse(u"sub\\..\\x", anchor)->text(), u"C:\\Data\\x");
    EXPECT_EQ(Path::Parse(u"file:/NoSuchVolume/a.txt", anchor)->text(),
              u"C:\\Data\\file:\\NoSuchVolume\\a.txt");
}

// A scratch folder with a long name (so it may get an 8.3 alias) holding one file, removed after.
class WindowsScratch : public ::testing::Test {
  protected:
    void SetUp() override {
        wchar_t temp[MAX_PATH];
        const DWORD length = GetTempPathW(MAX_PATH, temp);
        folder = FromWide(temp).substr(0, length) + u"Vantafile long folder name " +
                 FromWide(std::to_wstring(GetCurrentProcessId()).c_str());
        file = folder + u"\\a file with a long name.txt";
        ASSERT_TRUE(CreateDirectoryW(Wide(folder), nullptr));
        const HANDLE handle = CreateFileW(Wide(file), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                          FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(handle, INVALID_HANDLE_VALUE);
        CloseHandle(handle);
    }
    void TearDown() override {
        DeleteFileW(Wide(file));
        RemoveDirectoryW(Wide(folder));
    }

    std::u16string folder;
    std::u16string file;
    const Path anchor{u"C:\\Data\\"};
};

TEST_F(WindowsScratch, TellsFoldersFromFilesAndMissingItems) {
    EXPECT_TRUE(realSystem.isExistingFolder(folder));
    EXPECT_FALSE(realSystem.isExistingFolder(file));
    EXPECT_FALSE(realSystem.isExistingFolder(folder + u"\\missing"));
    EXPECT_FALSE(realSystem.isExistingFolder(folder + u"\\missing\\deeper"));
    EXPECT_FALSE(realSystem.isExistingFolder(u""));
    const std::u16string folderText = Path(folder).format(7, anchor)->units();
    EXPECT_EQ(folderText.substr(0, 6), u"file:/");
    EXPECT_EQ(folderText.back(), u'/');
    EXPECT_NE(Path(file).format(7, anchor)->units().back(), u'/');
}

TEST_F(WindowsScratch, ShortFormRoundTrip) {
    const std::optional<std::u16string> shortForm = realSystem.shortPathName(file);
    ASSERT_TRUE(shortForm.has_value()) << "an existing file always has a form";
    if (EqualsIgnoringCase(*shortForm, file)) {
        GTEST_SKIP() << "this file system gives no 8.3 alias for a long name (checked on "
                     << Path(file).description()->toUtf8() << ")";
    }
    EXPECT_EQ(Path(file).format(5, anchor)->units(), *shortForm);
    const std::u16string expanded = Path::Parse(u"fsspec:" + *shortForm, anchor)->text();
    EXPECT_TRUE(EqualsIgnoringCase(expanded, realSystem.longPathName(file).value()))
        << "expanded to " << String(expanded).toUtf8();
    const std::u16string longName = u"\\a file with a long name.txt";
    ASSERT_GT(expanded.size(), longName.size());
    EXPECT_EQ(expanded.substr(expanded.size() - longName.size()), longName)
        << "the long name comes back";
}

TEST(WindowsPathSystem, ShortFormOfAMissingItemExpandsToNothing) {
    EXPECT_EQ(realSystem.longPathName(u"C:\\NOSUCH~1\\NOSUCH~2"), std::nullopt);
    EXPECT_EQ(Path(u"C:\\NoSuch\\Missing.txt").format(5, Path(u"C:\\Data\\"))->units(),
              u"C:\\NoSuch\\Missing.txt");
}

}  // namespace
}  // namespace slib
