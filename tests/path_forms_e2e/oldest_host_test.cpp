// The plug-in on the oldest host it accepts (extension version 50): it imports nothing newer, so
// the system's loader takes it, and every function that touches a newer host call falls back.

#include <windows.h>

#include "items_e2e/items_fixture.h"

namespace items_test {
namespace {

class OldestHost : public ItemsTest {
  protected:
    void SetUp() override {
        slib::test::ScratchTest::SetUp();
        ASSERT_TRUE(host_.SetFile(kFmhostFileLocal, Wide(path(u"Solution.fmp12"))));
        ASSERT_TRUE(host_.LoadPlugin(Wide(BesideProgram(u"Vantafile.fmx64")), 50).Enabled());
    }
};

// 2^32 + 0x23456789: the 64-bit result needs all three parts of the older host's build.
constexpr int64_t kLargeSize = 0x123456789LL;

TEST_F(OldestHost, EveryFunctionTouchingANewerHostCallWorks) {
    writeFile(u"large.bin", "");
    const HANDLE file = CreateFileW(Wide(u"\\\\?\\" + path(u"large.bin")), GENERIC_WRITE, 0,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    LARGE_INTEGER end;
    end.QuadPart = kLargeSize;
    ASSERT_TRUE(SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file));
    CloseHandle(file);
    // 64-bit numbers without FM_FixPt_AssignInt64.
    EXPECT_EQ(evaluate(u"VFile_Get( \"size\" ; \"large.bin\" )"), "4886718345");
    EXPECT_EQ(evaluate(u"VFile_Get( \"size\" ; \"large.bin\" ) = 4886718345"), "1");
    // Fonts by PostScript name, both ways, without the host's PostScript lookups.
    EXPECT_EQ(call(u"VFile_Write( \"styled.rtf\" ; TextFont( \"Times\" ; \"Times New Roman\" ) ; "
                   u"\"rtf\" )"),
              Succeeded());
    EXPECT_EQ(evaluate(u"VFile_Read( \"styled.rtf\" ; \"rtf\" )"), "Times");
    // Containers without the FNAM and SIZE accessors: written from a file, read back, described.
    writeFile(u"data.bin", "container bytes");
    EXPECT_EQ(call(u"VFile_Write( \"copy.bin\" ; VFile_Read( \"data.bin\" ; \"file\" ) )"),
              Succeeded());
    EXPECT_EQ(readFile(u"copy.bin"), "container bytes");
    EXPECT_NE(evaluate(u"VFile_Get( \"type\" ; VFile_Read( \"data.bin\" ; \"file\" ) )"),
              "host error 0");
}

TEST(OldestHostLoader, RefusesAPluginImportingANewerExport) {
    fmhost::driver::Host host;
    const std::wstring plugin = Wide(BesideProgram(u"NewerImport.fmx64"));
    fmhost::driver::Plugin& older = host.LoadPlugin(plugin, 58);
    EXPECT_EQ(older.State(), kFmhostPluginNotLoaded);
    EXPECT_EQ(older.SystemError(), static_cast<uint32_t>(ERROR_PROC_NOT_FOUND));
    EXPECT_TRUE(host.LoadPlugin(plugin, 59).Enabled());
    EXPECT_TRUE(host.LoadPlugin(Wide(BesideProgram(u"Vantafile.fmx64")), 50).Enabled());
}

}  // namespace
}  // namespace items_test
