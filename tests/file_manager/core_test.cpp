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
    for (const std::u16string name : {u"new", u"taken"}) {
        EXPECT_EQ(FailureOf([&] { manager_.createDirectory(at(name)); }),
                  Failure(kItemExists, "Cannot create directory"));
    }
    EXPECT_EQ(readFile(u"taken"), "keep");
}

TEST_F(CoreTest, CreateFileHonoursTheOverwriteFlag) {
    manager_.createFile(at(u"f.txt"), false);
    EXPECT_EQ(readFile(u"f.txt"), "");

    writeFile(u"f.txt", "content");
    EXPECT_EQ(FailureOf([&] { manager_.createFile(at(u"f.txt"), false); }),
              Failure(kItemExists, "Cannot create file"));
    EXPECT_EQ(readFile(u"f.txt"), "content");

    manager_.createFile(at(u"f.txt"), true);
    EXPECT_EQ(readFile(u"f.txt"), "");

    // The handle is closed at once: the file can be opened exclusively right after.
    const HANDLE again = CreateFileW(Wide(path(u"f.txt")), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(again, INVALID_HANDLE_VALUE);
    CloseHandle(again);

    // No intermediate folders, and a folder is never replaced by a file.
    EXPECT_EQ(FailureOf([&] { manager_.createFile(at(u"no\\f.txt"), true); }),
              Failure(kItemNotFound, "Cannot create file"));
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
    const struct {
        const char16_t* name;
        int32_t position;
        uint32_t made;
    } cases[] = {{u"file", CreateKind::kFile, ItemKind::kFile},
                 {u"new", CreateKind::kNew, ItemKind::kFile},
                 {u"files", CreateKind::kFiles, ItemKind::kFile},
                 {u"folder", CreateKind::kFolder, ItemKind::kFolder},
                 {u"folders", CreateKind::kFolders, ItemKind::kFolder}};
    for (const auto& c : cases) {
        manager_.createItem(at(c.name), c.position);
        EXPECT_EQ(manager_.getItemKind(at(c.name)), c.made) << Narrow(c.name);
    }

    // Creating never empties an existing file.
    writeFile(u"kept", "data");
    EXPECT_EQ(FailureOf([&] { manager_.createItem(at(u"kept"), CreateKind::kFile); }),
              Failure(kItemExists, "Cannot create file"));
    EXPECT_EQ(readFile(u"kept"), "data");

    for (const int32_t unknown : {CreateKind::kUnknown, 5, -7}) {
        EXPECT_EQ(FailureOf([&] { manager_.createItem(at(u"odd"), unknown); }),
                  Failure(kBadParameter, "Wrong parameter"));
    }
    EXPECT_FALSE(exists(u"odd"));
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

TEST_F(CoreTest, SizesOfFilesAndFolderTreesIn64Bits) {
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

    EXPECT_EQ(manager_.getItemSize(at(u"five")), 5u);
    EXPECT_EQ(manager_.getItemSize(at(u"empty")), 0u);
    EXPECT_EQ(manager_.getItemSize(at(u"tree")), 1023u);
    EXPECT_EQ(manager_.getFolderSize(at(u"tree\\")), 1023u);
    EXPECT_EQ(manager_.getFolderSize(at(u"missing")), 0u);
    EXPECT_EQ(manager_.getItemSize(at(u"big\\huge.bin")), 5000000000u);
    EXPECT_EQ(manager_.getItemSize(at(u"big")), 5000000003u);
    SetFileAttributesW(Wide(path(u"tree\\sub\\.hidden")), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(FailureOf([&] { manager_.getItemSize(at(u"none")); }),
              Failure(kItemNotFound, "Cannot get item size"));
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
