// VFile_Mount and VFile_Unmount. Only the loopback address is ever asked for: these tests never
// reach out to another machine. Where the system cannot connect shares at all (Wine has no
// network provider), the refusal itself is what the plug-in must report, code and message.
#include <windows.h>

#include <winnetwk.h>

#include "foundation/error.h"
#include "foundation/file_manager.h"
#include "foundation/reportable_code.h"
#include "items_fixture.h"

namespace items_test {
namespace {

const std::u16string kShare = u"\\\\127.0.0.1\\vantafile-test";
const std::u16string kShareUrl = u"smb://127.0.0.1/vantafile-test";

std::u16string FreeDrive() {
    return std::u16string{slib::ChooseFreeDriveLetter(GetLogicalDrives()), u':'};
}

// What the system itself answers when asked to connect the share on `local`.
DWORD DirectMount(const std::u16string& local) {
    NETRESOURCEW resource = {};
    resource.dwType = RESOURCETYPE_DISK;
    resource.lpLocalName = const_cast<wchar_t*>(Wide(local));
    resource.lpRemoteName = const_cast<wchar_t*>(Wide(kShare));
    const DWORD result = WNetAddConnection2W(&resource, nullptr, nullptr, 0);
    if (result == NO_ERROR) {
        WNetCancelConnection2W(Wide(local), 0, TRUE);
    }
    return result;
}

// The code the plug-in reports for a system error value.
int Reported(DWORD systemError) {
    return slib::ReportableCode(slib::WindowsLastError(systemError).code());
}

class Volumes : public ItemsTest {};

TEST_F(Volumes, MountReadsItsArgumentsByCountAndReportsARefusal) {
    const std::u16string local = FreeDrive();
    const DWORD direct = DirectMount(local);
    if (direct == NO_ERROR) {
        GTEST_SKIP() << "a share answers on the loopback address: no refusal to observe";
    }
    const std::string refused = Failed(Reported(direct), "Cannot mount volume");
    const std::u16string url = Quoted(kShareUrl);
    const std::u16string drive = Quoted(local + u"\\");
    EXPECT_EQ(call(u"VFile_Mount( " + url + u" )"), refused);
    EXPECT_EQ(call(u"VFile_Mount( " + Quoted(kShare) + u" ; " + drive + u" )"), refused);
    EXPECT_EQ(call(u"VFile_Mount( " + url + u" ; \"me\" ; \"secret\" )"), refused);
    EXPECT_EQ(call(u"VFile_Mount( " + url + u" ; " + drive + u" ; \"me\" ; \"secret\" )"), refused);
    EXPECT_FALSE(slib::FileManager().isMountedVolume(slib::String(local)));
}

TEST_F(Volumes, MountAnswersTheLocalPathThatUnmountTakes) {
    const std::string mounted = evaluate(u"VFile_Mount( " + Quoted(kShareUrl) + u" )");
    if (mounted.size() != 3 || mounted[1] != ':') {
        const DWORD direct = DirectMount(FreeDrive());
        ASSERT_NE(direct, static_cast<DWORD>(NO_ERROR)) << "mount refused: " << mounted;
        GTEST_SKIP() << "no share can be connected here: the system refuses with " << direct;
    }
    EXPECT_EQ(mounted[2], '\\');
    const std::u16string drive = slib::String::FromUtf8(mounted.substr(0, 2))->units();
    EXPECT_TRUE(slib::FileManager().isMountedVolume(slib::String(drive)));
    EXPECT_EQ(call(u"VFile_Unmount( " + Quoted(drive + u"\\") + u" )"), Succeeded());
    EXPECT_FALSE(slib::FileManager().isMountedVolume(slib::String(drive)));
}

TEST_F(Volumes, UnmountOfALetterWithoutConnectionIsReported) {
    const std::u16string local = FreeDrive();
    const DWORD direct = WNetCancelConnection2W(Wide(local), CONNECT_UPDATE_PROFILE, TRUE);
    ASSERT_NE(direct, static_cast<DWORD>(NO_ERROR));
    const std::string refused = Failed(Reported(direct), "Error unmounting volume");
    EXPECT_EQ(call(u"VFile_Unmount( " + Quoted(local) + u" )"), refused);
    EXPECT_EQ(call(u"VFile_Unmount( " + Quoted(local + u"\\") + u" )"), refused);
}

}  // namespace
}  // namespace items_test
