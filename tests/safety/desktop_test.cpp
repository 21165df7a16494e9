// No dialog where no one can answer: without a desktop (forced here through the test hook) the
// shell's file operations carry the flag that forbids its own message boxes, nothing is opened
// or shown for a user who is not there, and failures come back as errors at once.
#include <windows.h>

#include <shellapi.h>

#include "foundation/windows/shell_dialog_flags.h"
#include "safety_fixture.h"

namespace safety_test {
namespace {

// Sets VF_TEST_DESKTOP for one scope.
class ForcedDesktop {
  public:
    explicit ForcedDesktop(const wchar_t* value) {
        SetEnvironmentVariableW(L"VF_TEST_DESKTOP", value);
    }
    ~ForcedDesktop() { SetEnvironmentVariableW(L"VF_TEST_DESKTOP", nullptr); }
    ForcedDesktop(const ForcedDesktop&) = delete;
    ForcedDesktop& operator=(const ForcedDesktop&) = delete;
};

TEST(ShellDialogFlags, ForbidTheShellsBoxesOnlyWithoutADesktop) {
    const struct {
        const wchar_t* desktop;
        FILEOP_FLAGS operation;
    } cases[] = {
        {L"none", FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOERRORUI},
        {L"NONE", FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOERRORUI},
        {L"interactive", FOF_SILENT | FOF_NOCONFIRMATION},
    };
    for (const auto& c : cases) {
        const ForcedDesktop forced(c.desktop);
        EXPECT_EQ(slib::FileOperationFlags(), c.operation)
            << Narrow(slib::test::FromWide(c.desktop));
    }
}

using NoDesktop = SafetyTest;

TEST_F(NoDesktop, FailuresComeBackAsErrors) {
    const ForcedDesktop forced(L"none");
    EXPECT_NE(codeOf(uR"(VFile_Delete( "Z:\proc\version" ))"), "0");
    EXPECT_EQ(call(uR"(VFile_Choose( "file" ))"),
              Failed(2400, "No interactive desktop to show the dialog on"));
}

// On a server no one could see a program opened for them, nor close it: opening and revealing
// fail at once, as the choosers do, and start nothing. Running a program still works there.
TEST_F(NoDesktop, OpenAndRevealStartNothingAndRunStillRuns) {
    const std::u16string recorder = installRecorder();
    writeFile(u"doc.txt", "doc");
    const std::string noDesktop = Failed(2400, "No interactive desktop to show the dialog on");
    const std::pair<const char16_t*, std::string> cases[] = {
        {uR"(VFile_Open( "doc.txt" ))", noDesktop},
        {uR"(VFile_Open( "doc.txt" ; "app dir/rec order.exe" ))", noDesktop},
        {uR"(VFile_Reveal( "doc.txt" ))", noDesktop},
        {uR"(VFile_Open( "app dir/rec order.exe" ))", noDesktop},
        // Arguments are judged first.
        {uR"(VFile_Open( "doc.txt" ; "a" ; "b" ))", Failed(-50, "Too many parameters")},
        {uR"(VFile_Reveal( 5 ))", Failed(-50, "Path parameter must be text")},
    };
    for (const auto& [calculation, outcome] : cases) {
        const ForcedDesktop forced(L"none");
        EXPECT_EQ(call(calculation), outcome) << Narrow(calculation);
    }
    EXPECT_FALSE(exists(u"record.txt")) << "a program was started";
    const ForcedDesktop forced(L"none");
    EXPECT_EQ(call(uR"(VFile_Run( "app dir/rec order.exe" ; "x" ))"), Succeeded());
    EXPECT_EQ(recorded(), slib::test::Quote(recorder) + u" x");
}

}  // namespace
}  // namespace safety_test
