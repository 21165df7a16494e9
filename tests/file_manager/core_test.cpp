// Kind test, creation, long paths, sizes and the profile folder, on real files.

#include <windows.h>

#include "foundation/error_codes.h"
#include "scratch_folder.h"

namespace slib {
namespace test {
namespace {

using CoreTest = ScratchTest;

TEST_F(CoreTest, ItemKindTellsFilesFoldersAndMissingItems) {
    writeFile(u"a.txt", "x");
    makeFolder(u"sub");
    EXPECT_EQ(manager_.getItemKind(at(u"a.txt")), ItemKind::kFile);
    EXPECT_EQ(manager_.getItemKind(at(u"sub")), ItemKind::kFolder);
    EXPECT_EQ(manager_.getItemKind(at(u"sub\\")), ItemKind::kFolder);
    EXPECT_EQ(manager_.getItemKind(at(u"missing")), ItemKind::kNone);
    // A missing parent is still "no such item", not a refusal.
    EXPECT_EQ(manager_.getItemKind(at(u"missing\\deeper\\b.txt")), ItemKind::kNone);
}

TEST_F(CoreTest, ItemKindRefusesWhatTheSystemCannotAnswer) {
    // As root under Wine no folder can be made unreadable; a name the system rejects is the
    // failure we can provoke. Prove it is neither "file not found" nor "path not found" first.
    const std::u16string bad = path(u"bad<name>?*");
    SetLastError(0);
    ASSERT_EQ(GetFileAttributesW(Wide(bad)), INVALID_FILE_ATTRIBUTES);
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
        GTEST_SKIP() << "this system reports a wildcard name as missing (" << error << ")";
    }
    EXPECT_TRUE(FailsWith([&] { manager_.getItemKind(String(bad)); }, kPermissionDenied,
                          "Insufficent file permissions"));
}

TEST_F(CoreTest, CreateDirectoryMakesOnlyTheLastComponent) {
    manager_.createDirectory(at(u"new"));
    EXPECT_EQ(manager_.getItemKind(at(u"new")), ItemKind::kFolder);

    const std::optional<Exception> missingParent =
        Caught([&] { manager_.createDirectory(at(u"a\\b")); });
    ASSERT_TRUE(missingParent);
    EXPECT_STREQ(missingParent->what(), "Cannot create directory");
    const auto* lastError = dynamic_cast<const WindowsLastError*>(missingParent->error().get());
    ASSERT_NE(lastError, nullptr);
    EXPECT_EQ(lastError->value(), static_cast<uint32_t>(ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(lastError->code(), kItemNotFound);
    EXPECT_FALSE(exists(u"a"));

    // An existing folder or file of that name is a failure, and stays as it was.
    writeFile(u"taken", "keep");
    EXPECT_TRUE(FailsWith([&] { manager_.createDirectory(at(u"new")); }, kItemExists,
                          "Cannot create directory"));
    EXPECT_TRUE(FailsWith([&] { manager_.createDirectory(at(u"taken")); }, kItemExists,
                          "Cannot create directory"));
    EXPECT_EQ(readFile(u"taken"), "keep");
}

TEST_F(CoreTest, CreateFileHonoursTheOverwriteFlag) {
    manager_.createFile(at(u"f.txt"), false);
    EXPECT_EQ(readFile(u"f.txt"), "");

    writeFile(u"f.txt", "content");
    EXPECT_TRUE(FailsWith([&] { manager_.createFile(at(u"f.txt"), false); }, kItemExists,
                          "Cannot create file"));
    EXPECT_EQ(readFile(u"f.txt"), "content");

    manager_.createFile(at(u"f.txt"), true);
    EXPECT_EQ(readFile(u"f.txt"), "");

    // The handle is closed at once: the file can be opened exclusively right after.
    const HANDLE again = CreateFileW(Wide(path(u"f.txt")), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(again, INVALID_HANDLE_VALUE);
    CloseHandle(again);

    // No intermediate folders, and a folder is never replaced by a file.
    EXPECT_TRUE(FailsWith([&] { manager_.createFile(at(u"no\\f.txt"), true); }, kItemNotFound,
                          "Cannot create file"));
    EXPECT_FALSE(exists(u"no"));
    makeFolder(u"dir");
    writeFile(u"dir\\inside", "i");
    for (const bool overwrite : {false, true}) {
        const std::optional<Exception> onFolder =
            Caught([&] { manager_.createFile(at(u"dir"), overwrite); });
        ASSERT_TRUE(onFolder) << overwrite;
        EXPECT_STREQ(onFolder->what(), "Cannot create file");
    }
    EXPECT_EQ(manager_.getItemKind(at(u"dir")), ItemKind::kFolder);
    EXPECT_EQ(readFile(u"dir\\inside"), "i");
}

TEST_F(CoreTest, CreateItemMapsKeywordPositions) {
    manager_.createItem(at(u"file"), CreateKind::kFile);
    manager_.createItem(at(u"new"), CreateKind::kNew);
    manager_.createItem(at(u"files"), CreateKind::kFiles);
    manager_.createItem(at(u"folder"), CreateKind::kFolder);
    manager_.createItem(at(u"folders"), CreateKind::kFolders);
    EXPECT_EQ(manager_.getItemKind(at(u"file")), ItemKind::kFile);
    EXPECT_EQ(manager_.getItemKind(at(u"new")), ItemKind::kFile);
    EXPECT_EQ(manager_.getItemKind(at(u"files")), ItemKind::kFile);
    EXPECT_EQ(manager_.getItemKind(at(u"folder")), ItemKind::kFolder);
    EXPECT_EQ(manager_.getItemKind(at(u"folders")), ItemKind::kFolder);

    // Creating never empties an existing file.
    writeFile(u"kept", "data");
    EXPECT_TRUE(FailsWith([&] { manager_.createItem(at(u"kept"), CreateKind::kFile); }, kItemExists,
                          "Cannot create file"));
    EXPECT_EQ(readFile(u"kept"), "data");

    for (const int32_t unknown : {CreateKind::kUnknown, 5, -7}) {
        EXPECT_TRUE(FailsWith([&] { manager_.createItem(at(u"odd"), unknown); }, kBadParameter,
                              "Wrong parameter"));
    }
    EXPECT_FALSE(exists(u"odd"));
}

TEST_F(CoreTest, LongPathsAreCreatedThroughThePrefix) {
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
    EXPECT_TRUE(FailsWith([&] { manager_.createFile(at(file), false); }, kItemExists,
                          "Cannot create file"));
    EXPECT_EQ(readFile(file), "long");
    manager_.createFile(at(file), true);
    EXPECT_EQ(readFile(file), "");
}

TEST_F(CoreTest, CreatedNamesReachTheSystemAsGiven) {
    // Only the long-path form keeps trailing dots and spaces; a plain path would lose them.
    manager_.createDirectory(at(u"folder."));
    manager_.createFile(at(u"file. "), false);
    const auto tree = snapshot();
    EXPECT_EQ(tree.count(u"folder."), 1u);
    EXPECT_EQ(tree.count(u"file. "), 1u);
    EXPECT_EQ(tree.size(), 2u);
}

TEST(LongPathPrefix, IsPutInFrontOfThePathAsGiven) {
    EXPECT_EQ(WithLongPathPrefix(u"C:\\a\\b"), u"\\\\?\\C:\\a\\b");
    EXPECT_EQ(WithLongPathPrefix(u"\\\\server\\share\\x"), u"\\\\?\\\\\\server\\share\\x");
    EXPECT_EQ(WithLongPathPrefix(u"C:/a/../b"), u"\\\\?\\C:/a/../b");
}

TEST_F(CoreTest, SizesOfFilesAndFolderTrees) {
    writeFile(u"five", "12345");
    makeFolder(u"empty");
    makeFolder(u"tree");
    makeFolder(u"tree\\sub");
    makeFolder(u"tree\\sub\\subsub");
    writeFile(u"tree\\a", std::string(1000, 'a'));
    writeFile(u"tree\\sub\\b", std::string(20, 'b'));
    writeFile(u"tree\\sub\\subsub\\c", "c");
    writeFile(u"tree\\sub\\.hidden", "hh");
    SetFileAttributesW(Wide(path(u"tree\\sub\\.hidden")), FILE_ATTRIBUTE_HIDDEN);

    EXPECT_EQ(manager_.getItemSize(at(u"five")), 5u);
    EXPECT_EQ(manager_.getItemSize(at(u"empty")), 0u);
    EXPECT_EQ(manager_.getItemSize(at(u"tree")), 1023u);
    EXPECT_EQ(manager_.getFolderSize(at(u"tree\\")), 1023u);
    EXPECT_EQ(manager_.getFolderSize(at(u"missing")), 0u);
    SetFileAttributesW(Wide(path(u"tree\\sub\\.hidden")), FILE_ATTRIBUTE_NORMAL);

    const std::optional<Exception> missing = Caught([&] { manager_.getItemSize(at(u"none")); });
    ASSERT_TRUE(missing);
    EXPECT_STREQ(missing->what(), "Cannot get item size");
    EXPECT_EQ(missing->error()->code(), kItemNotFound);
}

TEST_F(CoreTest, FolderSizesAreSummedIn64Bits) {
    // A sparse 5,000,000,000-byte file: its size alone overflows 32 bits.
    makeFolder(u"big");
    const HANDLE file = CreateFileW(Wide(path(u"big\\huge.bin")), GENERIC_WRITE, 0, nullptr,
                                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    LARGE_INTEGER end;
    end.QuadPart = 5000000000LL;
    const bool sized = SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file);
    CloseHandle(file);
    ASSERT_TRUE(sized);
    writeFile(u"big\\small", "abc");

    EXPECT_EQ(manager_.getItemSize(at(u"big\\huge.bin")), 5000000000u);
    EXPECT_EQ(manager_.getItemSize(at(u"big")), 5000000003u);
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
    const DWORD length = GetEnvironmentVariableW(L"USERPROFILE", profile, MAX_PATH);
    ASSERT_GT(length, 0u);
    const std::u16string home = FileManager().getHomeFolder()->units();
    EXPECT_EQ(CompareStringOrdinal(Wide(home), -1, profile, -1, TRUE), CSTR_EQUAL) << Narrow(home);
    EXPECT_NE(home.back(), u'\\');
}

}  // namespace
}  // namespace test
}  // namespace slib
