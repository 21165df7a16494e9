// VFile_Set( "convert" ) or ( "rotate" ) then VFile_Copy, end to end through the host.
#include "pictures_fixture.h"

namespace picturetest {
namespace {

class StagedCopyThroughHost : public PicturesTest {
  protected:
    void SetUp() override {
        PicturesTest::SetUp();
        writeFile(u"a.jpg", MakePicture(Format::kJpeg, 64, 48));
        writeFile(u"six.jpg", MakePicture(Format::kJpeg, 64, 48, 6));
        // Staging belongs to VFile_Set; a build without it answers -4 and stages nothing.
        const std::string staged = call(uR"(VFile_Set( "convert" ; "" ; 120 ; 80 ))");
        if (staged == Failed(-4, "Not implemented in this build")) {
            GTEST_SKIP() << "VFile_Set( \"convert\" ) is not in this build: " << staged;
        }
        ASSERT_EQ(staged, Succeeded());
    }
};

TEST_F(StagedCopyThroughHost, ConvertsOnceThenCopiesBytes) {
    EXPECT_EQ(call(uR"(VFile_Copy( "a.jpg" ; "b.jpg" ))"), Succeeded());
    EXPECT_EQ(picture(u"b.jpg"), "jpeg 120x80 RGBY");
    EXPECT_EQ(call(uR"(VFile_Copy( "a.jpg" ; "c.jpg" ))"), Succeeded());
    EXPECT_EQ(readFile(u"c.jpg"), readFile(u"a.jpg"));

    EXPECT_EQ(call(uR"(VFile_Set( "rotate" ; "" ; 1 ))"), Succeeded());
    EXPECT_EQ(call(uR"(VFile_Copy( "a.jpg" ; "r.jpg" ))"), Failed(-43, "Picture has no exif"));
    EXPECT_FALSE(exists(u"r.jpg"));
    EXPECT_EQ(call(uR"(VFile_Set( "rotate" ; "" ; 1 ))"), Succeeded());
    EXPECT_EQ(call(uR"(VFile_Copy( "six.jpg" ; "up.jpg" ))"), Succeeded());
    EXPECT_EQ(picture(u"up.jpg"), "jpeg 64x48 RGBY");
}

}  // namespace
}  // namespace picturetest
