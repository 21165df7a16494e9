// VFile_Convert on disk: sizes, every EXIF orientation, output formats and refusals, each result
// checked by its format, its size and where its marked corners ended up.
#include "picture/jpeg_exif.h"
#include "pictures_e2e.h"

namespace picturetest {
namespace {

class Convert : public PicturesTest {
  protected:
    // Converts `source` to "out" with the options, and describes the result.
    std::string convert(const std::u16string& source, const std::u16string& options) {
        const std::u16string calculation =
            u"VFile_Convert( " + Quoted(source) + u" ; \"out\" " + options + u" )";
        const std::string outcome = call(calculation);
        return outcome == Succeeded() ? picture(u"out") : outcome;
    }
};

TEST_F(Convert, ScalesByTheRequestedSides) {
    writeFile(u"a.png", MakePicture(L"image/png", 400, 300));
    const struct {
        const char16_t* options;
        const char* expected;
    } cases[] = {
        {u"", "png 400x300 RGBY"},
        {u"; \"width\" ; 100 ; \"proportional\" ; 1", "png 100x75 RGBY"},
        {u"; \"width\" ; 100 ; \"height\" ; 100 ; \"proportional\" ; 1", "png 100x75 RGBY"},
        {u"; \"width\" ; 100 ; \"height\" ; 100", "png 100x100 RGBY"},
        {u"; \"width\" ; 50.6 ; \"width\" ; 20.4", "png 20x300 RGBY"},  // the last one wins
        {u"; \"height\" ; 60 ; \"proportional\"", "png 400x60 RGBY"},   // a trailing name
    };
    for (const auto& c : cases) {
        EXPECT_EQ(convert(u"a.png", c.options), c.expected) << Narrow(c.options);
    }
}

TEST_F(Convert, ScalingKeepsAWhiteBorderWhite) {
    writeFile(u"framed.png", MakeFramedPicture(200, 160));
    // Down, up, and each side its own way: the filter near the edges sees the edge's own white.
    for (const char16_t* options :
         {u"; \"width\" ; 37 ; \"height\" ; 29", u"; \"width\" ; 613 ; \"height\" ; 487",
          u"; \"width\" ; 90 ; \"height\" ; 400"}) {
        ASSERT_EQ(
            call(u"VFile_Convert( \"framed.png\" ; \"out.png\" " + std::u16string(options) + u" )"),
            Succeeded());
        EXPECT_GE(DarkestEdgeChannel(*readFile(u"out.png")), 250) << Narrow(options);
    }
}

TEST_F(Convert, TurnsEveryExifOrientationUprightAndDropsTheTag) {
    for (uint16_t orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        writeFile(u"in.jpg", MakePicture(L"image/jpeg", 64, 48, orientation, orientation % 2));
        EXPECT_EQ(convert(u"in.jpg", u"; \"exif-rotate\" ; 1 ; \"width\" ; 100 ; \"height\" ; 50"),
                  "jpeg 100x50 RGBY");
        const std::string out = *readFile(u"out");
        EXPECT_EQ(
            slib::FindJpegExifOrientation(reinterpret_cast<const uint8_t*>(out.data()), out.size()),
            std::nullopt);
        EXPECT_EQ(convert(u"in.jpg",
                          u"; \"exif-rotate\" ; 1 ; \"width\" ; 32 ; "
                          u"\"proportional\" ; 1 ; \"output-format\" ; \"png\""),
                  "png 32x24 RGBY");
    }
    // Without exif-rotate the stored pixels stay as they are; without EXIF data nothing turns.
    writeFile(u"six.jpg", MakePicture(L"image/jpeg", 64, 48, 6));
    EXPECT_EQ(convert(u"six.jpg", u"; \"exif-rotate\" ; 0"), "jpeg 48x64 GYRB");
    writeFile(u"plain.jpg", MakePicture(L"image/jpeg", 64, 48));
    EXPECT_EQ(convert(u"plain.jpg", u"; \"exif-rotate\" ; 1"), "jpeg 64x48 RGBY");
}

TEST_F(Convert, WritesTheRequestedFormatOrKeepsTheSources) {
    const struct {
        const wchar_t* mimeType;
        const char16_t* options;
        const char* expected;
    } cases[] = {
        {L"image/png", u"; \"output-format\" ; \"jpg\"", "jpeg 40x30 RGBY"},
        {L"image/gif", u"; \"output-format\" ; \"png\"", "png 40x30 RGBY"},
        {L"image/jpeg", u"; \"output-format\" ; \"jpg\" ; \"output-format\" ; \"png\"",
         "png 40x30 RGBY"},
        {L"image/jpeg", u"", "jpeg 40x30 RGBY"},
        {L"image/png", u"", "png 40x30 RGBY"},
        {L"image/gif", u"", "gif 40x30 RGBY"},
        {L"image/bmp", u"", "bmp 40x30 RGBY"},
        {L"image/tiff", u"", "tiff 40x30 RGBY"},
    };
    for (const auto& c : cases) {
        writeFile(u"in", MakePicture(c.mimeType, 80, 60));
        EXPECT_EQ(
            convert(u"in", u"; \"width\" ; 40 ; \"proportional\" ; 1 " + std::u16string(c.options)),
            c.expected)
            << Narrow(c.options);
    }
}

TEST_F(Convert, RefusesBadRequestsAndKeepsTheTargetAsItWas) {
    writeFile(u"a.png", MakePicture(L"image/png", 40, 30));
    writeFile(u"cut.png", MakePicture(L"image/png", 40, 30).substr(0, 41));  // header only
    writeFile(u"text.png", "no picture");
    makeFolder(u"folder");
    writeFile(u"out", "old");
    const struct {
        const char16_t* source;
        const char16_t* options;
        std::string expected;
    } cases[] = {
        {u"a.png", u"; \"output-format\" ; \"JPG\"", Failed(-50, "Unknown output format")},
        {u"a.png", u"; \"output-format\" ; \"gif\"", Failed(-50, "Unknown output format")},
        {u"a.png", u"; \"Width\" ; 10", Failed(-50, "Unknown convert parameter")},
        {u"a.png", u"; \"size\" ; 1 ; \"output-format\" ; \"JPG\"",
         Failed(-50, "Unknown convert parameter")},
        {u"missing.png", u"", Failed(-43, "Source item does not exist")},
        {u"text.png", u"", Failed(-50, "This is not a picture.")},
        {u"folder", u"", Failed(-50, "This is not a picture.")},
        {u"cut.png", u"", Failed(-50, "Picture data is damaged")},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(convert(c.source, c.options), c.expected) << Narrow(c.source);
    }
    EXPECT_EQ(readFile(u"out"), "old");
    EXPECT_EQ(call(uR"(VFile_Convert( "a.png" ))"), Failed(-50, "Not enough parameters"));
    EXPECT_EQ(call(uR"(VFile_Convert( "a.png" ; "big" ; "width" ; 70000 ; "height" ; 10 ))"),
              Failed(-50, "Cannot create a picture of that size"));
    EXPECT_EQ(call(uR"(VFile_Convert( "a.png" ; "no folder/t.png" ))"),
              Failed(-43, "Cannot create the target picture file"));
    EXPECT_EQ(snapshot().size(), 5u);  // nothing new, nothing left half-written
}

TEST_F(Convert, LeavesTheSourceFreeAndMayReplaceIt) {
    writeFile(u"a.jpg", MakePicture(L"image/jpeg", 80, 60));
    EXPECT_EQ(call(uR"(VFile_Convert( "a.jpg" ; "a.jpg" ; "width" ; 20 ; "height" ; 10 ))"),
              Succeeded());
    EXPECT_EQ(picture(u"a.jpg"), "jpeg 20x10 RGBY");
    EXPECT_EQ(call(uR"(VFile_Delete( "a.jpg" ))"), Succeeded());
}

}  // namespace
}  // namespace picturetest
