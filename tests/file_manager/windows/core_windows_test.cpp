// Kind test, creation, long paths, sizes and the profile folder: the Win32 side of core_test.cpp
// (raw system values, long-path and short-name forms, the profile folder).

#include <windows.h>

#include "file_manager/scratch_folder.h"
#include "foundation/error_codes.h"

namespace slib {
namespace test {
namespace {

using CoreTest = ScratchTest;

TEST_F(CoreTest, ItemKindRefusesWhatTheSystemCannotAnswer) {
    // Win32 under Wine cannot make a folder unreadable (it has no permission bits to set); a name
    // the system rejects is the failure we can provoke. Prove it is neither "file not found" nor
    // "path not found" first.
    const std::u16string bad = path(u"bad<name>?*");
    SetLastError(0);
    ASSERT_EQ(GetFileAttributesW(Wide(bad)), INVALID_FILE_ATTRIBUTES);
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
        GTEST_SKIP() << "this system reports a wildcard name as missing (" << error << ")";
    }
    EXPECT_EQ(FailureOf([&] { manager_.getItemKind(String(bad)); }),
              Failure(kPermissionDenied, "Insufficent file permissions"));
}

TEST_F(CoreTest, CreateDirectoryKeepsTheSystemsOwnError) {
    const std::optional<Exception> missingParent =
        Caught([&] { manager_.createDirectory(at(u"a\\b")); });
    ASSERT_TRUE(missingParent);
    const auto* lastError = dynamic_cast<const WindowsLastError*>(missingParent->error().get());
    ASSERT_NE(lastError, nullptr);
    EXPECT_EQ(lastError->value(), static_cast<uint32_t>(ERROR_PATH_NOT_FOUND));
}

TEST_F(CoreTest, CreateFileClosesItsHandleAtOnce) {
    manager_.createFile(at(u"f.txt"), false);
    // The file can be opened exclusively right after.
    const HANDLE again = CreateFileW(Wide(path(u"f.txt")), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(again, INVALID_HANDLE_VALUE);
    CloseHandle(again);
}

TEST_F(CoreTest, HiddenFilesCountInAFoldersSize) {
    makeFolder(u"tree");
    writeFile(u"tree\\.hidden", "hh");
    SetFileAttributesW(Wide(path(u"tree\\.hidden")), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(manager_.getItemSize(at(u"tree")), 2u);
    SetFileAttributesW(Wide(path(u"tree\\.hidden")), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(CoreTest, LongPathsAndExactNamesReachTheSystemThroughThePrefix) {
    // Seven folders of 50 characters: well past the classic 260-character limit.
    std::u16string relative;
    for (char16_t level = u'a'; level < u'a' + 7; ++level) {
        relative += (relative.empty() ? u"" : u"\\") + std::u16string(50, level);
        manager_.createDirectory(at(relative));
    }
    const std::u16string file = relative + u"\\deep.txt";
    ASSERT_GT(path(file).size(), 300u);
    manager_.createFile(at(file), false);
    EXPECT_TRUE(exists(file));
    writeFile(file, "long");
    manager_.createFile(at(file), true);
    EXPECT_EQ(readFile(file), "");

    // Only the long-path form keeps trailing dots and spaces; a plain path would lose them.
    makeFolder(u"exact");
    manager_.createDirectory(at(u"exact\\folder."));
    manager_.createFile(at(u"exact\\file. "), false);
    EXPECT_EQ(snapshot(u"exact"),
              (std::map<std::u16string, std::string>{{u"folder.", "<dir>"}, {u"file. ", ""}}));
}

TEST(LongPathPrefix, IsPutInFrontOfTheNormalForm) {
    EXPECT_EQ(WithLongPathPrefix(u"C:\\a\\b"), u"\\\\?\\C:\\a\\b");
    EXPECT_EQ(WithLongPathPrefix(u"\\\\server\\share\\x"), u"\\\\?\\UNC\\server\\share\\x");
    EXPECT_EQ(WithLongPathPrefix(u"C:/a/../b"), u"\\\\?\\C:\\b");
}

TEST_F(CoreTest, ShortPathNamesTheSameItem) {
    makeFolder(u"a folder with a long name");
    writeFile(u"a folder with a long name\\some long file name.text", "s");
    const std::u16string full = path(u"a folder with a long name\\some long file name.text");
    const std::u16string shortForm = manager_.toShortPath(String(full))->units();
    wchar_t expanded[MAX_PATH];
    const DWORD length = GetLongPathNameW(Wide(shortForm), expanded, MAX_PATH);
    ASSERT_GT(length, 0u) << Narrow(shortForm);
    EXPECT_EQ(FromWide(expanded), full);

    // No short form for a missing item: the path comes back as given.
    const std::u16string missing = path(u"no such long name.txt");
    EXPECT_EQ(manager_.toShortPath(String(missing))->units(), missing);
}

TEST(HomeFolder, IsTheUserProfileWithoutTrailingSeparator) {
    wchar_t profile[MAX_PATH];
    ASSERT_GT(GetEnvironmentVariableW(L"USERPROFILE", profile, MAX_PATH), 0u);
    const std::u16string home = FileManager().getHomeFolder()->units();
    EXPECT_EQ(CompareStringOrdinal(Wide(home), -1, profile, -1, TRUE), CSTR_EQUAL) << Narrow(home);
    EXPECT_NE(home.back(), u'\\');
}

}  // namespace
}  // namespace test
}  // namespace slib
