// VFile_Open, VFile_Run and VFile_Reveal hand items to other programs: a recorder program notes
// the exact command line it was started with, and a folder window shows what was revealed. Their
// refusals are in items_test.cpp.
#include <windows.h>

#include "items_fixture.h"

namespace items_test {
namespace {

class ShellActions : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        recorder_ = installRecorder();
    }
    std::u16string recorder_;
};

TEST_F(ShellActions, RunStartsTheProgramWithEachLineAsAnEscapedArgument) {
    const struct {
        std::u16string arguments;
        std::u16string commandLineTail;
    } cases[] = {
        {u"", u""},
        {u" ; \"x y\"", u" x\\ y"},
        {u" ; 5", u" 5"},
        {u" ; \"one¶two\"", u" one two"},
        {u" ; \"C:\\\\dir\"", u" C:\\\\dir"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(Narrow(c.arguments));
        EXPECT_EQ(call(u"VFile_Run( \"app dir/rec order.exe\"" + c.arguments + u" )"), Succeeded());
        EXPECT_EQ(recorded(), Quote(recorder_) + c.commandLineTail);
    }
}

// Whether this system starts a program named by its long form when that is past MAX_PATH;
// `error` says why not.
bool StartsProgramsPastMaxPath(const std::u16string& program, DWORD& error) {
    std::wstring line = L"\"" + std::wstring(Wide(program)) + L"\" probe";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(Wide(u"\\\\?\\" + program), &line[0], nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &startup, &process)) {
        error = GetLastError();
        return false;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

// The program is named by its long form, as every other item is: a path past MAX_PATH works.
// It still reads its own name as the plain path.
TEST_F(ShellActions, RunAndOpenReachAProgramDeeperThanMaxPath) {
    std::u16string deep = u"app dir";
    while (path(deep).size() < MAX_PATH + 20) {
        deep += u"\\a folder name that takes the path past the limit";
        makeFolder(deep);
    }
    const std::u16string program = deep + u"\\rec order.exe";
    ASSERT_TRUE(CopyFileW(Wide(u"\\\\?\\" + recorder_), Wide(u"\\\\?\\" + path(program)), FALSE));
    DWORD error = 0;
    if (!StartsProgramsPastMaxPath(path(program), error)) {
        GTEST_SKIP() << "this system starts no program deeper than MAX_PATH, not even by its long "
                        "form (error "
                     << error << ")";
    }
    ASSERT_EQ(recorded(), Quote(path(program)) + u" probe");
    EXPECT_EQ(call(u"VFile_Run( " + Quoted(program) + u" ; \"x\" )"), Succeeded());
    EXPECT_EQ(recorded(), Quote(path(program)) + u" x");
    writeFile(u"doc.txt", "doc");
    EXPECT_EQ(call(u"VFile_Open( \"doc.txt\" ; " + Quoted(program) + u" )"), Succeeded());
    EXPECT_EQ(recorded(), Quote(path(program)) + u" " + Quote(path(u"doc.txt")));
}

// The path names the program file exactly, as it names any other item: no ".exe" is guessed.
TEST_F(ShellActions, RunStartsOnlyTheProgramFileNamed) {
    const std::string cannotRun = Failed(2400, "Cannot run the application");
    EXPECT_EQ(call(uR"(VFile_Run( "app dir/rec order" ))"), cannotRun);
    EXPECT_EQ(call(uR"(VFile_Open( "app dir/rec order.exe" ; "app dir/rec order" ))"),
              Failed(2400, "Cannot open file in the given application"));
    EXPECT_FALSE(exists(u"record.txt")) << "another program was started";
}

TEST_F(ShellActions, OpenWithAnApplicationPassesBothResolvedPaths) {
    writeFile(u"my doc.txt", "doc");
    EXPECT_EQ(call(u"VFile_Open( \"my doc.txt\" ; \"app dir\\\\rec order.exe\" )"), Succeeded());
    EXPECT_EQ(recorded(), Quote(recorder_) + u" " + Quote(path(u"my doc.txt")));
}

TEST_F(ShellActions, OpenAloneUsesTheDefaultAction) {
    // The default action of a program is to run it.
    EXPECT_EQ(call(u"VFile_Open( \"app dir/rec order.exe\" )"), Succeeded());
    const std::optional<std::u16string> line = recorded();
    ASSERT_TRUE(line);
    // How the shell quotes the program it starts is its own business.
    std::u16string unquoted;
    for (const char16_t unit : *line) {
        if (unit != u'"') {
            unquoted += unit;
        }
    }
    EXPECT_EQ(Narrow(unquoted.substr(0, unquoted.find_last_not_of(u' ') + 1)), Narrow(recorder_));
}

TEST_F(ShellActions, RevealOpensAWindowOnTheItemsFolder) {
    makeFolder(u"revealed parent");
    writeFile(u"revealed parent\\shown.txt", "s");
    EXPECT_EQ(call(u"VFile_Reveal( \"revealed parent/shown.txt\" )"), Succeeded());
    EXPECT_TRUE(slib::test::FolderWindowOpensAndCloses(u"revealed parent"));
}

}  // namespace
}  // namespace items_test
