// A file another Windows program holds with no sharing: refused, with the file kept.
#include <windows.h>

#include "contents_fixture.h"
#include "foundation/windows/unique_handles.h"

namespace contents_test {
namespace {

TEST_F(ContentsTest, AFileAnotherProgramHoldsIsRefusedAndKept) {
    writeFile(u"held.txt", "held");
    {
        // Open with no sharing at all, as a program holding the file for itself would.
        const slib::UniqueFileHandle held(
            CreateFileW(slib::test::Wide(path(u"held.txt")), GENERIC_READ | GENERIC_WRITE, 0,
                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(held.valid());
        EXPECT_EQ(call(u"VFile_Read( \"held.txt\" )"), Failed(-54, "Insufficent file permissions"));
        // A sharing violation has no classic code of its own.
        EXPECT_EQ(write(u"held.txt", u"\"x\"", u"0"), Failed(2400, "Cannot open file for writing"));
        EXPECT_EQ(write(u"held.txt", u"\"x\""), Failed(2400, "Cannot write to file"));
    }
    EXPECT_EQ(bytesOf(u"held.txt"), "held");
}

}  // namespace
}  // namespace contents_test
