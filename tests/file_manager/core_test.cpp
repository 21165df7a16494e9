// Kind test, creation and sizes on real files: the same cases and answers on every system.

#include "file_manager/scratch_folder.h"
#include "foundation/error_codes.h"

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

TEST_F(CoreTest, CreateDirectoryMakesOnlyTheLastComponent) {
    manager_.createDirectory(at(u"new"));
    EXPECT_EQ(manager_.getItemKind(at(u"new")), ItemKind::kFolder);

    const std::optional<Exception> missingParent =
        Caught([&] { manager_.createDirectory(at(u"a\\b")); });
    ASSERT_TRUE(missingParent);
    EXPECT_STREQ(missingParent->what(), "Cannot create directory");
    EXPECT_EQ(missingParent->error()->code(), kItemNotFound);
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
    // A sparse 5,000,000,000-byte file: its size alone overflows 32 bits.
    makeFolder(u"big");
    makeSparseFile(u"big\\huge.bin", 5000000000u);
    writeFile(u"big\\small", "abc");

    EXPECT_EQ(manager_.getItemSize(at(u"five")), 5u);
    EXPECT_EQ(manager_.getItemSize(at(u"empty")), 0u);
    EXPECT_EQ(manager_.getItemSize(at(u"tree")), 1023u);
    EXPECT_EQ(manager_.getFolderSize(at(u"tree\\")), 1023u);
    EXPECT_EQ(manager_.getFolderSize(at(u"missing")), 0u);
    EXPECT_EQ(manager_.getItemSize(at(u"big\\huge.bin")), 5000000000u);
    EXPECT_EQ(manager_.getItemSize(at(u"big")), 5000000003u);
    EXPECT_EQ(FailureOf([&] { manager_.getItemSize(at(u"none")); }),
              Failure(kItemNotFound, "Cannot get item size"));
}

}  // namespace
}  // namespace test
}  // namespace slib
