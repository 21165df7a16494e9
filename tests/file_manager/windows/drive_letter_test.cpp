// The drive-letter choice of a mount without a mount path: a pure function over the used-drive
// bits, Windows only.

#include "file_manager/scratch_folder.h"

namespace slib {
namespace test {
namespace {

constexpr uint32_t Bit(char letter) {
    return uint32_t{1} << (letter - 'A');
}

TEST(ChooseFreeDriveLetter, TakesTheHighestFreeLetter) {
    EXPECT_EQ(ChooseFreeDriveLetter(0), u'Z');
    EXPECT_EQ(ChooseFreeDriveLetter(Bit('C')), u'Z');
    EXPECT_EQ(ChooseFreeDriveLetter(Bit('Z') | Bit('Y')), u'X');
    EXPECT_EQ(ChooseFreeDriveLetter(Bit('Z') | Bit('X')), u'Y');
    EXPECT_EQ(ChooseFreeDriveLetter(0x03FFFFFEu), u'A');
    // Bits above Z are no drive letters and do not matter.
    EXPECT_EQ(ChooseFreeDriveLetter(0xFC000000u | Bit('Z')), u'Y');
    // With every letter in use the search runs past A.
    EXPECT_EQ(ChooseFreeDriveLetter(0x03FFFFFFu), u'@');
    EXPECT_EQ(ChooseFreeDriveLetter(0xFFFFFFFFu), u'@');
}

}  // namespace
}  // namespace test
}  // namespace slib
