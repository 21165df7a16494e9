// Copy, move and delete through the shell on real trees: results, check order, and that a failed
// check leaves the disk exactly as it was.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <shellapi.h>

#include "foundation/error_codes.h"
#include "scratch_folder.h"

namespace slib {
namespace test {
namespace {

class TransferTest : public ScratchTest {
  protected:
    // src\top.txt, src\sub\inner.txt, src\sub\empty\ and a lone file.
    void SetUp() override {
        ScratchTest::SetUp();
        makeFolder(u"src");
        writeFile(u"src\\top.txt", "top");
        makeFolder(u"src\\sub");
        writeFile(u"src\\sub\\inner.txt", "inner");
        makeFolder(u"src\\sub\\empty");
        writeFile(u"lone.txt", "lone");
    }

    // Runs `action`, expects the given failure, and that nothing on disk changed.
    void expectRefusedUnchanged(const std::function<void()>& action, int32_t code,
                                const char* message) {
        const auto before = snapshot();
        EXPECT_TRUE(FailsWith(action, code, message));
        EXPECT_EQ(snapshot(), before);
    }
};

TEST_F(TransferTest, CopiesAFileToANewPath) {
    manager_.copyItem(at(u"lone.txt"), at(u"copy.txt"));
    EXPECT_EQ(readFile(u"copy.txt"), "lone");
    EXPECT_EQ(readFile(u"lone.txt"), "lone");
    const std::u16string unicodeName = u"copie \u00e9 \u6587.txt";
    manager_.copyItem(at(u"lone.txt"), at(unicodeName));
    EXPECT_EQ(readFile(unicodeName), "lone");
}

TEST_F(TransferTest, CopiesAWholeTreeToANewPath) {
    manager_.copyItem(at(u"src"), at(u"dst"));
    EXPECT_EQ(snapshot(u"dst"), snapshot(u"src"));
    EXPECT_EQ(snapshot(u"dst").size(), 4u);
}

TEST_F(TransferTest, CopiesIntoAnExistingFolderReplacingSilently) {
    makeFolder(u"into");
    writeFile(u"into\\lone.txt", "old");
    writeFile(u"into\\other.txt", "other");
    manager_.copyItem(at(u"lone.txt"), at(u"into"));
    EXPECT_EQ(readFile(u"into\\lone.txt"), "lone");
    EXPECT_EQ(readFile(u"into\\other.txt"), "other");

    manager_.copyItem(at(u"src"), at(u"into"));
    EXPECT_EQ(snapshot(u"into\\src"), snapshot(u"src"));
}

TEST_F(TransferTest, CopyChecksSourceThenDestination) {
    // Onto an existing file: refused, the file keeps its content.
    writeFile(u"existing.txt", "mine");
    expectRefusedUnchanged([&] { manager_.copyItem(at(u"lone.txt"), at(u"existing.txt")); },
                           kItemExists, "Destination item already exists");
    expectRefusedUnchanged([&] { manager_.copyItem(at(u"src"), at(u"existing.txt")); }, kItemExists,
                           "Destination item already exists");
    // A missing source is reported first, even when the destination would be refused too.
    expectRefusedUnchanged([&] { manager_.copyItem(at(u"missing"), at(u"existing.txt")); },
                           kItemNotFound, "Source item does not exist");
    expectRefusedUnchanged([&] { manager_.copyItem(at(u"missing"), at(u"bad<name>?*")); },
                           kItemNotFound, "Source item does not exist");
}

TEST_F(TransferTest, MovesAndRenamesFilesAndTrees) {
    const auto tree = snapshot(u"src");
    manager_.moveItem(at(u"src"), at(u"renamed"));
    EXPECT_FALSE(exists(u"src"));
    EXPECT_EQ(snapshot(u"renamed"), tree);

    makeFolder(u"box");
    manager_.moveItem(at(u"lone.txt"), at(u"box"));
    EXPECT_FALSE(exists(u"lone.txt"));
    EXPECT_EQ(readFile(u"box\\lone.txt"), "lone");

    manager_.moveItem(at(u"renamed"), at(u"box"));
    EXPECT_EQ(snapshot(u"box\\renamed"), tree);
}

TEST_F(TransferTest, MoveRefusesToOverwriteAFileInTheDestinationFolder) {
    makeFolder(u"box");
    writeFile(u"box\\lone.txt", "already here");
    expectRefusedUnchanged([&] { manager_.moveItem(at(u"lone.txt"), at(u"box")); }, kItemExists,
                           "Destination item already exists");
    // The candidate test looks at the name, not the kind of the source: a folder whose name is
    // taken by a file inside the destination is refused too.
    makeFolder(u"other");
    writeFile(u"other\\src", "a file named like the folder");
    expectRefusedUnchanged([&] { manager_.moveItem(at(u"src"), at(u"other")); }, kItemExists,
                           "Destination item already exists");
}

TEST_F(TransferTest, MoveChecksSourceThenDestination) {
    writeFile(u"existing.txt", "mine");
    expectRefusedUnchanged([&] { manager_.moveItem(at(u"lone.txt"), at(u"existing.txt")); },
                           kItemExists, "Destination item already exists");
    expectRefusedUnchanged([&] { manager_.moveItem(at(u"missing"), at(u"existing.txt")); },
                           kItemNotFound, "Source item does not exist");
}

// Whether this system's shell merges a folder moved into a folder that holds one of the same
// name; Wine's reports success and leaves both untouched.
bool ShellMergesMovedFolders(const std::u16string& probe) {
    CreateDirectoryW(Wide(probe), nullptr);
    CreateDirectoryW(Wide(probe + u"\\a"), nullptr);
    CreateDirectoryW(Wide(probe + u"\\box"), nullptr);
    CreateDirectoryW(Wide(probe + u"\\box\\a"), nullptr);
    CreateDirectoryW(Wide(probe + u"\\a\\moved"), nullptr);
    const std::u16string from = probe + u"\\a" + std::u16string(2, u'\0');
    const std::u16string to = probe + u"\\box" + std::u16string(2, u'\0');
    SHFILEOPSTRUCTW request = {};
    request.wFunc = FO_MOVE;
    request.pFrom = Wide(from);
    request.pTo = Wide(to);
    request.fFlags = FOF_SILENT | FOF_NOCONFIRMATION;
    SHFileOperationW(&request);
    const bool merged =
        GetFileAttributesW(Wide(probe + u"\\box\\a\\moved")) != INVALID_FILE_ATTRIBUTES;
    RemoveTree(probe);
    return merged;
}

TEST_F(TransferTest, MoveMergesAFolderIntoASameNamedFolder) {
    if (!ShellMergesMovedFolders(path(u"probe"))) {
        GTEST_SKIP() << "this system's shell (Wine) does not merge a moved folder into a "
                        "same-named folder: SHFileOperationW(FO_MOVE) left the probe unmoved";
    }
    makeFolder(u"box");
    makeFolder(u"box\\src");
    writeFile(u"box\\src\\kept.txt", "kept");
    manager_.moveItem(at(u"src"), at(u"box"));
    EXPECT_FALSE(exists(u"src"));
    EXPECT_EQ(readFile(u"box\\src\\kept.txt"), "kept");
    EXPECT_EQ(readFile(u"box\\src\\top.txt"), "top");
    EXPECT_EQ(readFile(u"box\\src\\sub\\inner.txt"), "inner");
}

TEST_F(TransferTest, CopyMergesAFolderIntoASameNamedFolder) {
    makeFolder(u"box");
    makeFolder(u"box\\src");
    writeFile(u"box\\src\\kept.txt", "kept");
    writeFile(u"box\\src\\top.txt", "old top");
    manager_.copyItem(at(u"src"), at(u"box"));
    EXPECT_EQ(readFile(u"box\\src\\kept.txt"), "kept");
    EXPECT_EQ(readFile(u"box\\src\\top.txt"), "top");
    EXPECT_EQ(readFile(u"box\\src\\sub\\inner.txt"), "inner");
    EXPECT_TRUE(exists(u"src\\sub\\inner.txt"));
}

TEST_F(TransferTest, DeletesFilesAndWholeTreesPermanently) {
    SHQUERYRBINFO before = {sizeof(SHQUERYRBINFO), 0, 0};
    const bool binReadable = SUCCEEDED(SHQueryRecycleBinW(nullptr, &before));

    manager_.deleteItem(at(u"lone.txt"));
    manager_.deleteItem(at(u"src"));
    EXPECT_TRUE(snapshot().empty());

    if (!binReadable) {
        GTEST_SKIP() << "SHQueryRecycleBinW fails here: cannot prove the recycle bin stayed empty";
    }
    SHQUERYRBINFO after = {sizeof(SHQUERYRBINFO), 0, 0};
    ASSERT_TRUE(SUCCEEDED(SHQueryRecycleBinW(nullptr, &after)));
    EXPECT_EQ(after.i64NumItems, before.i64NumItems);
}

TEST_F(TransferTest, AnEmbeddedZeroCannotAddASecondItem) {
    // The shell reads a zero-separated list; only the checked first path may reach it.
    std::u16string smuggled = path(u"lone.txt");
    smuggled += u'\0';
    smuggled += path(u"src");
    manager_.deleteItem(String(smuggled));
    EXPECT_FALSE(exists(u"lone.txt"));
    EXPECT_EQ(snapshot(u"src").size(), 4u);
}

TEST_F(TransferTest, DeleteOfAMissingItemChangesNothing) {
    expectRefusedUnchanged([&] { manager_.deleteItem(at(u"missing")); }, kItemNotFound,
                           "Item does not exist");
    expectRefusedUnchanged([&] { manager_.deleteItem(at(u"src\\missing\\deeper")); }, kItemNotFound,
                           "Item does not exist");
}

}  // namespace
}  // namespace test
}  // namespace slib
