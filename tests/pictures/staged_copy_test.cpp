// VFile_Set( "convert" ) then VFile_Copy, end to end through the host.
#include "pictures_e2e.h"

namespace picturetest {
namespace {

using StagedCopyThroughHost = PicturesTest;

TEST_F(StagedCopyThroughHost, ConvertsOnceThenCopiesBytes) {
    writeFile(u"a.jpg", MakePicture(L"image/jpeg", 64, 48));
    // Staging belongs to VFile_Set; a build without it answers -4 and stages nothing.
    const std::string staged = call(uR"(VFile_Set( "convert" ; "" ; 120 ; 80 ))");
    if (staged == Failed(-4, "Not implemented in this build")) {
        GTEST_SKIP() << "VFile_Set( \"convert\" ) is not in this build";
    }
    ASSERT_EQ(staged, Succeeded());
    EXPECT_EQ(call(uR"(VFile_Copy( "a.jpg" ; "b.jpg" ))"), Succeeded());
    EXPECT_EQ(picture(u"b.jpg"), "jpeg 120x80 RGBY");
    EXPECT_EQ(call(uR"(VFile_Copy( "a.jpg" ; "c.jpg" ))"), Succeeded());
    EXPECT_EQ(readFile(u"c.jpg"), readFile(u"a.jpg"));
}

}  // namespace
}  // namespace picturetest
