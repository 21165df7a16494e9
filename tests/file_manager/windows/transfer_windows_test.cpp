// Copy, move and delete: the Win32 side of transfer_test.cpp (the recycle bin, the shell's
// zero-separated lists and its answers).

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <shellapi.h>

#include "file_manager/transfer_fixture.h"
#include "foundation/error_codes.h"
#include "foundation/windows/shell_file_operation.h"

namespace slib {
namespace test {

bool TransferTest::MovedFoldersMerge() {
    return ShellMergesMovedFolders(path(u"probe"));
}

namespace {

TEST_F(TransferTest, DeletesBypassTheRecycleBin) {
    SHQUERYRBINFO before = {sizeof(SHQUERYRBINFO), 0, 0};
    if (!SUCCEEDED(SHQueryRecycleBinW(nullptr, &before))) {
        GTEST_SKIP() << "SHQueryRecycleBinW fails here: cannot prove the recycle bin stayed empty";
    }
    manager_.deleteItem(at(u"lone.txt"));
    manager_.deleteItem(at(u"src"));
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

}  // namespace
}  // namespace test
}  // namespace slib
