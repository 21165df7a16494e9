// VFile_Set( "convert" ) or ( "rotate" ) then VFile_Copy, end to end through the host.
#include "pictures_e2e.h"

namespace picturetest {
namespace {

using StagedCopyThroughHost = PicturesTest;

TEST_F(StagedCopyThroughHost, ConvertsOnceThenCopiesBytes) {
    const std::string staged = " | No Error Message | No Error Message";  // VFile_Set answers ""
    writeFile(u"a.jpg", MakePicture(L"image/jpeg", 64, 48));
    ASSERT_EQ(call(uR"(VFile_Set( "convert" ; "" ; 120 ; 80 ))"), staged);
    EXPECT_EQ(call(uR"(VFile_Copy( "a.jpg" ; "b.jpg" ))"), Succeeded());
    EXPECT_EQ(picture(u"b.jpg"), "jpeg 120x80 RGBY");
    EXPECT_EQ(call(uR"(VFile_Copy( "a.jpg" ; "c.jpg" ))"), Succeeded());
    EXPECT_EQ(readFile(u"c.jpg"), readFile(u"a.jpg"));

    ASSERT_EQ(call(uR"(VFile_Set( "rotate" ; "" ))"), staged);
    EXPECT_EQ(call(uR"(VFile_Copy( "a.jpg" ; "r.jpg" ))"), Failed(-43, "Picture has no exif"));
    EXPECT_EQ(call(uR"(VFile_Copy( "a.jpg" ; "r.jpg" ))"), Succeeded());
    EXPECT_EQ(readFile(u"r.jpg"), readFile(u"a.jpg"));
}

}  // namespace
}  // namespace picturetest
