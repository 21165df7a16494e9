// A 5 GB file (sparse: no real data is written) read and written past the 32-bit limits, and a
// file larger than the size the system reports for it read to its end.
#include <windows.h>

#include <winioctl.h>

#include "contents_fixture.h"
#include "foundation/windows/unique_handles.h"

namespace contents_test {
namespace {

class LargeFile : public ContentsTest {};

constexpr int64_t kFiveGigabytes = 5'000'000'000;

// Marks the file sparse first, so only the bytes written at the end take room on disk.
bool MakeSparseFile(const std::u16string& path, int64_t size) {
    const slib::UniqueFileHandle file(CreateFileW(slib::test::Wide(path),
                                                  GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                                  CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) {
        return false;
    }
    DWORD returned = 0;
    DeviceIoControl(file.get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &returned, nullptr);
    LARGE_INTEGER end;
    end.QuadPart = size - 1;
    DWORD written = 0;
    return SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN) &&
           WriteFile(file.get(), "Z", 1, &written, nullptr) && written == 1;
}

TEST_F(LargeFile, FiveGigabytesAreNeitherEmptyNorHalfRead) {
    ASSERT_TRUE(MakeSparseFile(path(u"big.bin"), kFiveGigabytes));
    EXPECT_EQ(read(u"big.bin", u"-1 ; \"utf-8\""), "Z");
    EXPECT_EQ(read(u"big.bin", u"4999999998 ; 1 ; \"hex-dump\""), "00");
    EXPECT_EQ(write(u"big.bin", u"\"AB\"", u"-1"), Succeeded());
    EXPECT_EQ(read(u"big.bin", u"-3 ; \"utf-8\""), "ZAB");
    const std::string tooLarge =
        Failed(-50, "File is too large to read into one value (4 GiB or more)");
    EXPECT_EQ(call(u"VFile_Read( \"big.bin\" ; \"base64\" )"), tooLarge);
    EXPECT_EQ(call(u"VFile_Read( \"big.bin\" )"), tooLarge);
    EXPECT_EQ(call(u"VFile_Read( \"big.bin\" ; 5 ; \"file\" )"), tooLarge);
}

// A network client's cached size can lag behind the file. Linux's own files under /proc report
// size 0 and hold text: a read must go on to the end whatever size was reported.
TEST_F(LargeFile, AFileLargerThanItsReportedSizeIsReadToItsEnd) {
    const std::u16string file = u"Z:\\proc\\version";
    WIN32_FILE_ATTRIBUTE_DATA reported{};
    std::string content;
    const slib::UniqueFileHandle handle(CreateFileW(slib::test::Wide(file), GENERIC_READ,
                                                    FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    char buffer[4096];
    DWORD got = 0;
    while (handle.valid() && ReadFile(handle.get(), buffer, sizeof buffer, &got, nullptr) &&
           got > 0) {
        content.append(buffer, got);
    }
    if (!GetFileAttributesExW(slib::test::Wide(file), GetFileExInfoStandard, &reported) ||
        content.size() < 20 || reported.nFileSizeLow >= content.size()) {
        GTEST_SKIP() << "no file here reports less than it holds (Linux's /proc under Wine)";
    }
    EXPECT_EQ(read(file, u"\"utf-8\""), content);
    EXPECT_EQ(read(file, u"5 ; 10 ; \"utf-8\""), content.substr(5, 10));
}

}  // namespace
}  // namespace contents_test
