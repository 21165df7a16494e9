// Copy, move and delete through the shell on real trees: results, check order, and that a failed
// check leaves the disk exactly as it was.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <shellapi.h>

#include "foundation/error_codes.h"
#include "foundation/windows/shell_file_operation.h"
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
};

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

// A stand-in for the shell: answers as told and leaves behind a last error of its own, as the
// shell's inner calls may, which says nothing about the operation.
struct ShellAnswer {
    int result;
    BOOL aborted;
    DWORD leftError;
};
ShellAnswer gShellAnswer;

int WINAPI AnsweringShell(LPSHFILEOPSTRUCTW request) {
    request->fAnyOperationsAborted = gShellAnswer.aborted;
    SetLastError(gShellAnswer.leftError);
    return gShellAnswer.result;
}

TEST(ShellOutcome, TheCodeIsTheShellsAnswerWhateverLastErrorItLeaves) {
    constexpr int kSourceMissing = 0x7C;  // the shell's own number
    const struct {
        const char* name;
        ShellAnswer answer;
        int32_t code;
    } cases[] = {
        {"its own number", {kSourceMissing, FALSE, ERROR_ACCESS_DENIED}, kItemNotFound},
        {"a system error number",
         {ERROR_FILE_NOT_FOUND, FALSE, ERROR_ACCESS_DENIED},
         kItemNotFound},
        {"cancelled, parts aborted", {ERROR_CANCELLED, TRUE, ERROR_ALREADY_EXISTS}, kIoError},
        {"0 with parts aborted", {0, TRUE, ERROR_FILE_NOT_FOUND}, kIoError},
        {"done", {0, FALSE, ERROR_ACCESS_DENIED}, kNoError},
    };
    const String source(u"C:\\nowhere\\a.txt");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        gShellAnswer = c.answer;
        const ShellOutcome outcome = RunShellOperation(FO_DELETE, source, nullptr, &AnsweringShell);
        EXPECT_EQ(outcome.failed(), c.code != kNoError);
        EXPECT_EQ(ShellOutcomeCode(outcome), c.code);
    }
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
