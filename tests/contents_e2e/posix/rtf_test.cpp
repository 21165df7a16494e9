// RTF both ways needs the system's rich-text control, which a Linux server lacks: each direction
// is refused with -4 and leaves the file as it was.
#include "contents_fixture.h"

namespace contents_test {
namespace {

TEST_F(ContentsTest, RtfIsRefusedAndTheFileKept) {
    writeFile(u"kept.rtf", "{\\rtf1 kept}");
    for (const char16_t* calculation : {
             u"VFile_Write( \"kept.rtf\" ; \"styled\" ; \"rtf\" )",
             u"VFile_Read( \"kept.rtf\" ; \"rtf\" )",
         }) {
        EXPECT_EQ(call(calculation).substr(0, 9), "-4 | -4 |") << Narrow(calculation);
        EXPECT_EQ(bytesOf(u"kept.rtf"), "{\\rtf1 kept}");
    }
}

}  // namespace
}  // namespace contents_test
