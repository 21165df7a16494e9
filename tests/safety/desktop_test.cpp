// No dialog where no one can answer: without a desktop (forced here through the test hook) the
// shell's requests carry the flags that forbid its own message boxes, and failures come back as
// errors at once.
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
        ULONG execute;
    } cases[] = {
        {L"none", FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOERRORUI, SEE_MASK_FLAG_NO_UI},
        {L"NONE", FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOERRORUI, SEE_MASK_FLAG_NO_UI},
        {L"interactive", FOF_SILENT | FOF_NOCONFIRMATION, 0},
    };
    for (const auto& c : cases) {
        const ForcedDesktop forced(c.desktop);
        EXPECT_EQ(slib::FileOperationFlags(), c.operation)
            << Narrow(slib::test::FromWide(c.desktop));
        EXPECT_EQ(slib::ShellExecuteQuietMask(), c.execute);
    }
}

using NoDesktop = SafetyTest;

TEST_F(NoDesktop, FailuresComeBackAsErrors) {
    const ForcedDesktop forced(L"none");
    writeFile(u"doc.vfnotype", "no program for this type");
    EXPECT_EQ(call(uR"(VFile_Open( "doc.vfnotype" ))"),
              Failed(2400, "Cannot open file in the default application"));
    EXPECT_NE(codeOf(uR"(VFile_Delete( "Z:\proc\version" ))"), "0");
    EXPECT_EQ(call(uR"(VFile_Choose( "file" ))"),
              Failed(2400, "No interactive desktop to show the dialog on"));
}

}  // namespace
}  // namespace safety_test
