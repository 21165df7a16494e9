// Copy, move and delete on real trees: results, check order, and that a failed check leaves the
// disk exactly as it was. The same cases and answers on every system.

#include "file_manager/scratch_folder.h"
#include "file_manager/transfer_fixture.h"
#include "foundation/error_codes.h"

namespace slib {
namespace test {
namespace {

TEST_F(TransferTest, CopiesFilesAndTreesToNewPaths) {
    manager_.copyItem(at(u"lone.txt"), at(u"copy.txt"));
    EXPECT_EQ(readFile(u"copy.txt"), "lone");
    EXPECT_EQ(readFile(u"lone.txt"), "lone");
    const std::u16string unicodeName = u"copie \u00e9 \u6587.txt";
    manager_.copyItem(at(u"lone.txt"), at(unicodeName));
    EXPECT_EQ(readFile(unicodeName), "lone");
    manager_.copyItem(at(u"src"), at(u"dst"));
    EXPECT_EQ(snapshot(u"dst"), snapshot(u"src"));
    EXPECT_EQ(snapshot(u"dst").size(), 4u);
}

TEST_F(TransferTest, CopiesIntoAnExistingFolderMergingAndReplacingSilently) {
    makeFolder(u"box");
    writeFile(u"box\\lone.txt", "old");
    writeFile(u"box\\other.txt", "other");
    makeFolder(u"box\\src");
    writeFile(u"box\\src\\kept.txt", "kept");
    writeFile(u"box\\src\\top.txt", "old top");
    manager_.copyItem(at(u"lone.txt"), at(u"box"));
    manager_.copyItem(at(u"src"), at(u"box"));
    EXPECT_EQ(readFile(u"box\\lone.txt"), "lone");
    EXPECT_EQ(readFile(u"box\\other.txt"), "other");
    // The source stays, and the folder of its name is merged into, not replaced.
    auto merged = snapshot(u"src");
    ASSERT_EQ(merged.size(), 4u);
    merged[u"kept.txt"] = "kept";
    EXPECT_EQ(snapshot(u"box\\src"), merged);
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

TEST_F(TransferTest, MoveMergesAFolderIntoASameNamedFolder) {
    if (!MovedFoldersMerge()) {
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

TEST_F(TransferTest, DeletesFilesAndWholeTreesPermanently) {
    manager_.deleteItem(at(u"lone.txt"));
    manager_.deleteItem(at(u"src"));
    EXPECT_TRUE(snapshot().empty());
}

TEST_F(TransferTest, RefusalsComeSourceFirstAndLeaveTheDiskAsItWas) {
    writeFile(u"existing.txt", "mine");
    makeFolder(u"box");
    writeFile(u"box\\lone.txt", "already here");
    makeFolder(u"other");
    writeFile(u"other\\src", "a file named like the folder");
    const auto copy = &FileManager::copyItem;
    const auto move = &FileManager::moveItem;
    const std::string taken = Failure(kItemExists, "Destination item already exists");
    const std::string noSource = Failure(kItemNotFound, "Source item does not exist");
    const struct {
        decltype(copy) transfer;
        std::u16string from, to;
        const std::string& failure;
    } cases[] = {
        // Onto an existing file, whatever the source's kind.
        {copy, u"lone.txt", u"existing.txt", taken},
        {copy, u"src", u"existing.txt", taken},
        {move, u"lone.txt", u"existing.txt", taken},
        // A missing source is reported first, even when the destination would be refused too.
        {copy, u"missing", u"existing.txt", noSource},
        {copy, u"missing", u"bad<name>?*", noSource},
        {move, u"missing", u"existing.txt", noSource},
        // Move never overwrites a file in the destination folder. The candidate test looks at
        // the name, not the kind of the source: a folder whose name a file there takes is refused.
        {move, u"lone.txt", u"box", taken},
        {move, u"src", u"other", taken},
    };
    const auto before = snapshot();
    for (const auto& c : cases) {
        SCOPED_TRACE(Narrow(c.from + u" -> " + c.to));
        EXPECT_EQ(FailureOf([&] { (manager_.*c.transfer)(at(c.from), at(c.to)); }), c.failure);
        EXPECT_EQ(snapshot(), before);
    }
    for (const std::u16string missing : {u"missing", u"src\\missing\\deeper"}) {
        EXPECT_EQ(FailureOf([&] { manager_.deleteItem(at(missing)); }),
                  Failure(kItemNotFound, "Item does not exist"));
        EXPECT_EQ(snapshot(), before);
    }
}

}  // namespace
}  // namespace test
}  // namespace slib
