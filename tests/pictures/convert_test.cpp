// VFile_Convert on disk: sizes, every EXIF orientation, output formats and refusals, each result
// checked by its format, its size and where its marked corners ended up.
#include "pictures_fixture.h"

namespace picturetest {
namespace {

using items_test::Narrow;

class Convert : public PicturesTest {};

TEST_F(Convert, ScalesByTheRequestedSides) {
    writeFile(u"a.png", MakePicture(Format::kPng, 400, 300));
    const struct {
        const char16_t* options;
        const char* expected;
    } cases[] = {
        {u"", "png 400x300 RGBY"},
        {u"; \"width\" ; 100 ; \"proportional\" ; 1", "png 100x75 RGBY"},
        {u"; \"width\" ; 100 ; \"height\" ; 100 ; \"proportional\" ; 1", "png 100x75 RGBY"},
        {u"; \"width\" ; 100 ; \"height\" ; 100", "png 100x100 RGBY"},
        {u"; \"height\" ; 60 ; \"proportional\" ; \"1\"", "png 80x60 RGBY"},
        {u"; \"width\" ; 100 ; \"proportional\" ; 0", "png 100x300 RGBY"},
        {u"; \"width\" ; 50.6 ; \"height\" ; 20.4", "png 51x20 RGBY"},
        {u"; \"width\" ; 100 ; \"width\" ; 40", "png 40x300 RGBY"},  // the last value wins
        {u"; \"width\" ; 100 ; \"height\"", "png 100x300 RGBY"},     // a trailing name is ignored
    };
    for (const auto& c : cases) {
        const std::u16string calculation =
            u"VFile_Convert( \"a.png\" ; \"out.png\" " + std::u16string(c.options) + u" )";
        EXPECT_EQ(call(calculation), Succeeded()) << Narrow(calculation);
        EXPECT_EQ(picture(u"out.png"), c.expected) << Narrow(calculation);
    }
    EXPECT_EQ(picture(u"a.png"), "png 400x300 RGBY");
}

TEST_F(Convert, TurnsEveryExifOrientationUprightAndDropsTheTag) {
    for (uint16_t orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        // 64x48 upright; stored lying on its side for 5 to 8, in both EXIF byte orders.
        writeFile(u"in.jpg", MakePicture(Format::kJpeg, 64, 48, orientation, orientation % 2));
        ASSERT_TRUE(keepsOrientation(u"in.jpg"));
        EXPECT_EQ(call(uR"(VFile_Convert( "in.jpg" ; "up.jpg" ; "exif-rotate" ; 1 ;
                                         "width" ; 100 ; "height" ; 50 ))"),
                  Succeeded());
        EXPECT_EQ(picture(u"up.jpg"), "jpeg 100x50 RGBY");
        EXPECT_FALSE(keepsOrientation(u"up.jpg"));

        EXPECT_EQ(call(uR"(VFile_Convert( "in.jpg" ; "up.png" ; "exif-rotate" ; 1 ;
                                         "width" ; 32 ; "proportional" ; 1 ; "output-format" ; "png" ))"),
                  Succeeded());
        EXPECT_EQ(picture(u"up.png"), "png 32x24 RGBY");
    }
    // Without exif-rotate the stored pixels stay as they are.
    writeFile(u"six.jpg", MakePicture(Format::kJpeg, 64, 48, 6));
    EXPECT_EQ(call(uR"(VFile_Convert( "six.jpg" ; "as stored.jpg" ; "exif-rotate" ; 0 ))"),
              Succeeded());
    EXPECT_EQ(picture(u"as stored.jpg"), "jpeg 48x64 GYRB");
    // A picture without EXIF data is converted as it stands.
    writeFile(u"plain.jpg", MakePicture(Format::kJpeg, 64, 48));
    EXPECT_EQ(call(uR"(VFile_Convert( "plain.jpg" ; "plain out.jpg" ; "exif-rotate" ; 1 ))"),
              Succeeded());
    EXPECT_EQ(picture(u"plain out.jpg"), "jpeg 64x48 RGBY");
}

TEST_F(Convert, WritesTheRequestedFormatOrKeepsTheSources) {
    const struct {
        Format format;
        const char16_t* source;
        const char16_t* outputFormat;  // nullptr: none given
        const char* expected;
    } cases[] = {
        {Format::kPng, u"a.png", u"jpg", "jpeg 40x30 RGBY"},
        {Format::kJpeg, u"a.jpg", u"png", "png 40x30 RGBY"},
        {Format::kJpeg, u"b.jpg", nullptr, "jpeg 40x30 RGBY"},
        {Format::kPng, u"b.png", nullptr, "png 40x30 RGBY"},
        {Format::kGif, u"a.gif", nullptr, "gif 40x30 RGBY"},
        {Format::kGif, u"b.gif", u"png", "png 40x30 RGBY"},
        {Format::kBmp, u"a.bmp", nullptr, "bmp 40x30 RGBY"},
        {Format::kTiff, u"a.tif", nullptr, "tiff 40x30 RGBY"},
    };
    for (const auto& c : cases) {
        writeFile(c.source, MakePicture(c.format, 80, 60));
        std::u16string calculation = u"VFile_Convert( " + items_test::Quoted(c.source) +
                                     u" ; \"out\" ; \"width\" ; 40 ; \"proportional\" ; 1";
        if (c.outputFormat) {
            calculation += u" ; \"output-format\" ; " + items_test::Quoted(c.outputFormat);
        }
        calculation += u" )";
        EXPECT_EQ(call(calculation), Succeeded()) << Narrow(calculation);
        EXPECT_EQ(picture(u"out"), c.expected) << Narrow(calculation);
    }
    // Given twice, the last output format wins.
    EXPECT_EQ(call(uR"(VFile_Convert( "a.png" ; "twice" ; "output-format" ; "jpg" ;
                                     "output-format" ; "png" ))"),
              Succeeded());
    EXPECT_EQ(picture(u"twice"), "png 80x60 RGBY");
}

TEST_F(Convert, RefusesBadRequestsAndLeavesNoTarget) {
    writeFile(u"a.png", MakePicture(Format::kPng, 40, 30));
    writeFile(u"text.png", "just some text");
    const std::string png = MakePicture(Format::kPng, 40, 30);
    writeFile(u"cut.png", png.substr(0, 41));  // signature and header, no pixel data
    makeFolder(u"folder");
    const struct {
        const char16_t* calculation;
        std::string expected;
    } cases[] = {
        {uR"(VFile_Convert( "a.png" ))", Failed(-50, "Not enough parameters")},
        {uR"(VFile_Convert( "a.png" ; 5 ))", Failed(-50, "Path parameter must be text")},
        {uR"(VFile_Convert( "a.png" ; "t.png" ; "output-format" ; "JPG" ))",
         Failed(-50, "Unknown output format")},
        {uR"(VFile_Convert( "a.png" ; "t.png" ; "output-format" ; "gif" ))",
         Failed(-50, "Unknown output format")},
        {uR"(VFile_Convert( "a.png" ; "t.png" ; "Width" ; 10 ))",
         Failed(-50, "Unknown convert parameter")},
        {uR"(VFile_Convert( "a.png" ; "t.png" ; "width" ; 10 ; "size" ; 10 ; "output-format" ; "JPG" ))",
         Failed(-50, "Unknown convert parameter")},
        {uR"(VFile_Convert( "missing.png" ; "t.png" ))", Failed(-43, "Source item does not exist")},
        {uR"(VFile_Convert( "text.png" ; "t.png" ))", Failed(-50, "This is not a picture.")},
        {uR"(VFile_Convert( "folder" ; "t.png" ))", Failed(-50, "This is not a picture.")},
        {uR"(VFile_Convert( "cut.png" ; "t.png" ))", Failed(-50, "Picture data is damaged")},
        {uR"(VFile_Convert( "a.png" ; "no such folder/t.png" ))",
         Failed(-43, "Cannot create the target picture file")},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(call(c.calculation), c.expected) << Narrow(c.calculation);
        EXPECT_FALSE(exists(u"t.png")) << Narrow(c.calculation);
    }
}

TEST_F(Convert, LeavesTheSourceFreeAndMayReplaceIt) {
    // A refused conversion leaves an existing target alone, with nothing left beside it.
    writeFile(u"keep.png", "old");
    writeFile(u"text.png", "no picture");
    EXPECT_EQ(call(uR"(VFile_Convert( "text.png" ; "keep.png" ))"),
              Failed(-50, "This is not a picture."));
    EXPECT_EQ(snapshot(), (items_test::Tree{{u"keep.png", "old"}, {u"text.png", "no picture"}}));

    writeFile(u"a.jpg", MakePicture(Format::kJpeg, 80, 60));
    EXPECT_EQ(call(uR"(VFile_Convert( "a.jpg" ; "a.jpg" ; "width" ; 20 ; "height" ; 10 ))"),
              Succeeded());
    EXPECT_EQ(picture(u"a.jpg"), "jpeg 20x10 RGBY");
    // Nothing keeps the file open: it can be deleted straight away.
    EXPECT_EQ(call(uR"(VFile_Delete( "a.jpg" ))"), Succeeded());
    EXPECT_FALSE(exists(u"a.jpg"));
}

}  // namespace
}  // namespace picturetest
