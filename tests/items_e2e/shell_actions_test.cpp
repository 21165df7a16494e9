// VFile_Open, VFile_Run and VFile_Reveal hand items to other programs: a recorder program notes
// the exact command line it was started with, and a folder window shows what was revealed.
#include <windows.h>

#include <optional>

#include "items_fixture.h"

namespace items_test {
namespace {

class ShellActions : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        // Spaces in the paths show the quoting at work.
        makeFolder(u"app dir");
        recorder_ = path(u"app dir\\rec order.exe");
        ASSERT_TRUE(CopyFileW(Wide(BesideTest(u"cmdline_recorder.exe")), Wide(recorder_), FALSE));
        SetEnvironmentVariableW(L"VF_RECORDER_OUTPUT", Wide(path(u"record.txt")));
    }
    void TearDown() override {
        SetEnvironmentVariableW(L"VF_RECORDER_OUTPUT", nullptr);
        ItemsTest::TearDown();
    }

    // The command line the recorder was started with, once it has written it down (removing
    // the record for the next start); none when no program started.
    std::optional<std::u16string> recorded() {
        // Started programs are not waited for by the plug-in; this bound is only ever reached
        // when nothing was started at all.
        for (int attempt = 0; attempt < 600 && !exists(u"record.txt"); ++attempt) {
            Sleep(50);
        }
        const std::optional<std::string> bytes = readFile(u"record.txt");
        if (!bytes) {
            return std::nullopt;
        }
        DeleteFileW(Wide(path(u"record.txt")));
        return std::u16string(reinterpret_cast<const char16_t*>(bytes->data()), bytes->size() / 2);
    }

    static std::u16string quoted(const std::u16string& text) { return u"\"" + text + u"\""; }

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
        EXPECT_EQ(recorded(), quoted(recorder_) + c.commandLineTail);
    }
}

TEST_F(ShellActions, RunReportsWhatCannotStart) {
    writeFile(u"not a program.exe", "text");
    EXPECT_EQ(call(u"VFile_Run( \"missing.exe\" ; \"a\" )"),
              Failed(2400, "Cannot run the application"));
    EXPECT_EQ(call(u"VFile_Run( \"not a program.exe\" )"),
              Failed(2400, "Cannot run the application"));
    EXPECT_EQ(call(u"VFile_Run( 7 )"), Failed(-50, "Path parameter must be text"));
    EXPECT_FALSE(exists(u"record.txt"));
}

TEST_F(ShellActions, OpenWithAnApplicationPassesBothResolvedPaths) {
    writeFile(u"my doc.txt", "doc");
    EXPECT_EQ(call(u"VFile_Open( \"my doc.txt\" ; \"app dir\\\\rec order.exe\" )"), Succeeded());
    EXPECT_EQ(recorded(), quoted(recorder_) + u" " + quoted(path(u"my doc.txt")));
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

    writeFile(u"doc.vfnotype", "no program for this type");
    EXPECT_EQ(call(u"VFile_Open( \"doc.vfnotype\" )"),
              Failed(2400, "Cannot open file in the default application"));
}

TEST_F(ShellActions, OpenChecksItsArgumentsBeforeStartingAnything) {
    writeFile(u"my doc.txt", "doc");
    EXPECT_EQ(call(u"VFile_Open( \"my doc.txt\" ; \"app dir/rec order.exe\" ; \"c\" )"),
              Failed(-50, "Too many parameters"));
    EXPECT_EQ(call(u"VFile_Open( \"my doc.txt\" ; 5 )"),
              Failed(-50, "Path parameter must be text"));
    EXPECT_EQ(call(u"VFile_Open( 5 ; \"b\" ; \"c\" )"), Failed(-50, "Path parameter must be text"));
    EXPECT_EQ(call(u"VFile_Open()"), Failed(-50, "Not enough parameters"));
    EXPECT_EQ(call(u"VFile_Open( \"my doc.txt\" ; \"missing.exe\" )"),
              Failed(2400, "Cannot open file in the given application"));
    EXPECT_FALSE(exists(u"record.txt"));
}

// A visible window titled `title` that belongs to another process, or null.
HWND FindFolderWindow(const std::u16string& title) {
    for (HWND window = FindWindowExW(nullptr, nullptr, nullptr, nullptr); window != nullptr;
         window = FindWindowExW(nullptr, window, nullptr, nullptr)) {
        wchar_t text[MAX_PATH] = {};
        DWORD owner = 0;
        GetWindowTextW(window, text, MAX_PATH);
        GetWindowThreadProcessId(window, &owner);
        if (IsWindowVisible(window) && owner != GetCurrentProcessId() &&
            slib::test::FromWide(text) == title) {
            return window;
        }
    }
    return nullptr;
}

TEST_F(ShellActions, RevealOpensAWindowOnTheItemsFolder) {
    makeFolder(u"revealed parent");
    writeFile(u"revealed parent\\shown.txt", "s");
    ASSERT_EQ(FindFolderWindow(u"revealed parent"), nullptr);
    EXPECT_EQ(call(u"VFile_Reveal( \"revealed parent/shown.txt\" )"), Succeeded());
    HWND window = nullptr;
    for (int attempt = 0; attempt < 600 && window == nullptr; ++attempt) {
        Sleep(50);
        window = FindFolderWindow(u"revealed parent");
    }
    ASSERT_NE(window, nullptr) << "no folder window appeared";
    PostMessageW(window, WM_CLOSE, 0, 0);
    for (int attempt = 0; attempt < 600 && IsWindow(window); ++attempt) {
        Sleep(50);
    }
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(ShellActions, RevealOfAMissingItemIsReported) {
    EXPECT_EQ(call(u"VFile_Reveal( \"missing/file.txt\" )"),
              Failed(2400, "Cannot reveal the file"));
    EXPECT_EQ(call(u"VFile_Reveal( 3 )"), Failed(-50, "Path parameter must be text"));
}

}  // namespace
}  // namespace items_test
