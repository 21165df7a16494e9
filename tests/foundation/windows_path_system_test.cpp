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

// A scratch folder with a long name (so it may get an 8.3 alias), removed with its contents.
class ScratchFolder {
  public:
    ScratchFolder() {
        wchar_t temp[MAX_PATH];
        const DWORD length = GetTempPathW(MAX_PATH, temp);
        path_ = FromWide(temp).substr(0, length) + u"Vantafile long folder name " +
                FromWide(std::to_wstring(GetCurrentProcessId()).c_str());
        created_ = CreateDirectoryW(Wide(path_), nullptr) != 0;
        file_ = path_ + u"\\a file with a long name.txt";
        const HANDLE handle = CreateFileW(Wide(file_), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                          FILE_ATTRIBUTE_NORMAL, nullptr);
        if (handle != INVALID_HANDLE_VALUE) {
            CloseHandle(handle);
        }
    }
    ~ScratchFolder() {
        DeleteFileW(Wide(file_));
        RemoveDirectoryW(Wide(path_));
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    bool created() const { return created_; }
    const std::u16string& path() const { return path_; }
    const std::u16string& file() const { return file_; }

  private:
    std::u16string path_;
    std::u16string file_;
    bool created_ = false;
};

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

TEST(WindowsPathSystem, CanonicalisesDotsWithinTheClassicLimit) {
    EXPECT_EQ(realSystem.canonicalize(u"C:\\Data\\.\\x"), u"C:\\Data\\x");
    EXPECT_EQ(realSystem.canonicalize(u"C:\\Data\\sub\\..\\x"), u"C:\\Data\\x");
    EXPECT_EQ(realSystem.canonicalize(u"C:\\Data\\" + std::u16string(300, u'n')), std::nullopt);
}

TEST(WindowsPathSystem, RelativeNamesAreCanonicalisedAfterJoining) {
    const Path anchor(u"C:\\Data\\");
    EXPECT_EQ(Path::Parse(u"sub\\.\\x", anchor)->text(), u"C:\\Data\\sub\\x");
    EXPECT_EQ(Path::Parse(u"sub\\..\\x", anchor)->text(), u"C:\\Data\\x");
    EXPECT_EQ(Path::Parse(u"file:/NoSuchVolume/a.txt", anchor)->text(),
              u"C:\\Data\\file:\\NoSuchVolume\\a.txt");
}

TEST(WindowsPathSystem, TellsFoldersFromFilesAndMissingItems) {
    ScratchFolder scratch;
    ASSERT_TRUE(scratch.created());
    EXPECT_TRUE(realSystem.isExistingFolder(scratch.path()));
    EXPECT_FALSE(realSystem.isExistingFolder(scratch.file()));
    EXPECT_FALSE(realSystem.isExistingFolder(scratch.path() + u"\\missing"));
    EXPECT_FALSE(realSystem.isExistingFolder(scratch.path() + u"\\missing\\deeper"));
    EXPECT_FALSE(realSystem.isExistingFolder(u""));

    const Path anchor(u"C:\\Data\\");
    const std::u16string folderText = Path(scratch.path()).format(7, anchor)->units();
    EXPECT_EQ(folderText.substr(0, 6), u"file:/");
    EXPECT_EQ(folderText.back(), u'/');
    EXPECT_NE(Path(scratch.file()).format(7, anchor)->units().back(), u'/');
}

TEST(WindowsPathSystem, ShortFormRoundTrip) {
    ScratchFolder scratch;
    ASSERT_TRUE(scratch.created());
    const std::optional<std::u16string> shortForm = realSystem.shortPathName(scratch.file());
    ASSERT_TRUE(shortForm.has_value()) << "an existing file always has a form";
    if (EqualsIgnoringCase(*shortForm, scratch.file())) {
        GTEST_SKIP() << "this file system gives no 8.3 alias for a long name (checked on "
                     << Path(scratch.file()).description()->toUtf8() << ")";
    }
    const Path anchor(u"C:\\Data\\");
    EXPECT_EQ(Path(scratch.file()).format(5, anchor)->units(), *shortForm);
    const std::u16string expanded = Path::Parse(u"fsspec:" + *shortForm, anchor)->text();
    EXPECT_TRUE(EqualsIgnoringCase(expanded, realSystem.longPathName(scratch.file()).value()))
        << "expanded to " << String(expanded).toUtf8();
    const std::u16string longName = u"\\a file with a long name.txt";
    ASSERT_GT(expanded.size(), longName.size());
    EXPECT_EQ(expanded.substr(expanded.size() - longName.size()), longName)
        << "the long name comes back";
}

TEST(WindowsPathSystem, ShortFormOfAMissingItemExpandsToNothing) {
    EXPECT_EQ(realSystem.longPathName(u"C:\\NOSUCH~1\\NOSUCH~2"), std::nullopt);
    EXPECT_EQ(Path::Parse(u"fsspec:C:\\NOSUCH~1\\NOSUCH~2", Path(u"C:\\Data\\"))->text(), u"");
    EXPECT_EQ(Path(u"C:\\NoSuch\\Missing.txt").format(5, Path(u"C:\\Data\\"))->units(),
              u"C:\\NoSuch\\Missing.txt");
}

}  // namespace
}  // namespace slib
