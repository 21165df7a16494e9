// A 5 GB file (sparse: no real data is written) read and written past the 32-bit limits.
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

}  // namespace
}  // namespace contents_test
