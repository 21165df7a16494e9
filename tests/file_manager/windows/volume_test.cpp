// Drive listing and the volume test path resolution relies on; mounting where the system lets us.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <winnetwk.h>

#include "file_manager/scratch_folder.h"

namespace slib {
namespace test {
namespace {

// "<message> (system <value>)" for a failure carrying the system's own error value, else
// Failure(); "" for none.
std::string SystemFailureOf(const std::function<void()>& action) {
    const std::optional<Exception> failure = Caught(action);
    if (!failure) {
        return "";
    }
    const auto* error = dynamic_cast<const WindowsLastError*>(failure->error().get());
    return error ? std::string(failure->what()) + " (system " + std::to_string(error->value()) + ")"
                 : Failure(failure->error()->code(), failure->what());
}

// A drive letter no volume uses right now.
char16_t FreeLetter() {
    return ChooseFreeDriveLetter(GetLogicalDrives());
}

TEST(Volumes, ListsEveryLogicalDriveAsLetterAndColon) {
    const DWORD used = GetLogicalDrives();
    const auto volumes = FileManager().listVolumes();
    ASSERT_EQ(static_cast<int>(volumes.size()), __builtin_popcount(used));
    for (const auto& volume : volumes) {
        const std::u16string& name = volume->units();
        ASSERT_EQ(name.size(), 2u);
        EXPECT_EQ(name[1], u':');
        ASSERT_TRUE(name[0] >= u'A' && name[0] <= u'Z') << Narrow(name);
        EXPECT_NE(used & (1u << (name[0] - u'A')), 0u) << Narrow(name);
    }
}

TEST(Volumes, MountedVolumeNamesMatchWithoutRegardToCase) {
    const FileManager manager;
    EXPECT_TRUE(manager.isMountedVolume(String(u"C:")));
    EXPECT_TRUE(manager.isMountedVolume(String(u"c:")));
    EXPECT_FALSE(manager.isMountedVolume(String(u"C:\\")));
    EXPECT_FALSE(manager.isMountedVolume(String(u"C")));
    EXPECT_FALSE(manager.isMountedVolume(String(u"")));
    EXPECT_FALSE(manager.isMountedVolume(String(u"Data")));
    const char16_t free = FreeLetter();
    ASSERT_GE(free, u'A');
    EXPECT_FALSE(manager.isMountedVolume(String(std::u16string{free, u':'})));
}

TEST(Volumes, UnmountOfALetterWithNoConnectionIsReported) {
    const std::u16string name{FreeLetter(), u':', u'\\'};
    // What the system answers for the bare drive name ("Q:"); the trailing "\" is ours to drop.
    const DWORD direct =
        WNetCancelConnection2W(Wide(name.substr(0, 2)), CONNECT_UPDATE_PROFILE, TRUE);
    ASSERT_NE(direct, static_cast<DWORD>(NO_ERROR));
    EXPECT_EQ(SystemFailureOf([&] { FileManager().unmountVolume(String(name)); }),
              "Error unmounting volume (system " + std::to_string(direct) + ")");
}

// Only the loopback address is ever asked for: this must never reach out to another machine.
const std::u16string kRemote = u"\\\\127.0.0.1\\vantafile-test";

TEST(Volumes, RefusedMountReportsTheSystemsCode) {
    const std::u16string local{FreeLetter(), u':'};
    const std::u16string remote = kRemote;
    NETRESOURCEW probe = {};
    probe.dwType = RESOURCETYPE_DISK;
    probe.lpLocalName = const_cast<wchar_t*>(Wide(local));
    probe.lpRemoteName = const_cast<wchar_t*>(Wide(remote));
    const DWORD direct = WNetAddConnection2W(&probe, nullptr, nullptr, 0);
    if (direct == NO_ERROR) {
        WNetCancelConnection2W(Wide(local), 0, TRUE);
        GTEST_SKIP() << "a share answers on the loopback address: no refusal to observe";
    }
    // The mount path's trailing separator is dropped: the same request, the same refusal.
    EXPECT_EQ(SystemFailureOf([&] {
                  FileManager().mountVolume(
                      String(kRemote), std::make_shared<String>(local + u"\\"), nullptr, nullptr);
              }),
              "Cannot mount volume (system " + std::to_string(direct) + ")");
    EXPECT_FALSE(FileManager().isMountedVolume(String(local)));
}

}  // namespace
}  // namespace test
}  // namespace slib
