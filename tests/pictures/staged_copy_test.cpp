// VFile_Set( "convert" ) or ( "rotate" ) then VFile_Copy, end to end through the host: the copy
// converts once with the staged options, forgets them whatever happens, then copies bytes again.
#include "pictures_e2e.h"

namespace picturetest {
namespace {

using StagedCopy = PicturesTest;

TEST_F(StagedCopy, ConvertsOnceWithTheStagedOptionsThenCopiesBytes) {
    writeFile(u"a.jpg", MakePicture(L"image/jpeg", 64, 48));
    writeFile(u"six.jpg", MakePicture(L"image/jpeg", 64, 48, 6));
    const struct {
        const char16_t* staged;
        const char16_t *source, *target;
        std::string outcome;
        const char* picture;
    } cases[] = {
        {u"\"convert\" ; \"\" ; 120 ; 80", u"a.jpg", u"b.jpg", Succeeded(), "jpeg 120x80 RGBY"},
        {u"\"convert\" ; \"\" ; 32", u"a.jpg", u"w.PNG", Succeeded(), "png 32x24 RGBY"},
        {u"\"rotate\" ; \"\"", u"six.jpg", u"up.dat", Succeeded(), "jpeg 64x48 RGBY"},
        {u"\"rotate\" ; \"\"", u"a.jpg", u"r.jpg", Failed(-43, "Picture has no exif"), "no file"},
        {u"\"convert\" ; \"\" ; 10", u"missing.jpg", u"m.jpg",
         Failed(-43, "Source item does not exist"), "no file"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(Narrow(c.staged));
        // VFile_Set answers "" on success.
        ASSERT_EQ(call(u"VFile_Set( " + std::u16string(c.staged) + u" )"),
                  " | No Error Message | No Error Message");
        EXPECT_EQ(call(u"VFile_Copy( " + Quoted(c.source) + u" ; " + Quoted(c.target) + u" )"),
                  c.outcome);
        EXPECT_EQ(picture(c.target), c.picture);
        EXPECT_EQ(call(uR"(VFile_Copy( "six.jpg" ; "plain.jpg" ))"), Succeeded());
        EXPECT_EQ(readFile(u"plain.jpg"), readFile(u"six.jpg"));
        slib::test::RemoveTree(path(u"plain.jpg"));
    }
}

// FileMaker Server runs every client's scripts in one process, each client in a session of its
// own: a copy takes only its own session's options, and a session that ends leaves none.
TEST_F(StagedCopy, EachSessionCopiesWithItsOwnOptionsAndAnEndedSessionLeavesNone) {
    writeFile(u"a.jpg", MakePicture(L"image/jpeg", 64, 48));
    const auto stage = [&](uint64_t session, const std::u16string& width) {
        ASSERT_TRUE(host_.UseSession(session));
        ASSERT_EQ(call(u"VFile_Set( \"convert\" ; \"\" ; " + width + u" )"),
                  " | No Error Message | No Error Message");
    };
    const auto copy = [&](uint64_t session, const std::u16string& target) {
        EXPECT_TRUE(host_.UseSession(session));
        EXPECT_EQ(call(u"VFile_Copy( \"a.jpg\" ; " + Quoted(target) + u" )"), Succeeded());
        return picture(target);
    };
    const std::string plain = picture(u"a.jpg");
    stage(2, u"32");
    EXPECT_EQ(copy(3, u"three.jpg"), plain);
    stage(3, u"16");
    EXPECT_EQ(copy(2, u"two.jpg"), "jpeg 32x24 RGBY");
    EXPECT_EQ(copy(2, u"two again.jpg"), plain);
    stage(2, u"8");
    ASSERT_TRUE(host_.EndSession(2));
    // The host may give a later client the ended session's id.
    EXPECT_EQ(copy(2, u"reused.jpg"), plain);
    EXPECT_EQ(copy(3, u"three staged.jpg"), "jpeg 16x12 RGBY");
}

}  // namespace
}  // namespace picturetest
