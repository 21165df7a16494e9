// VFile_Get( "picture-pixels" ) on picture files and on pictures held in containers.
#include "pictures_fixture.h"

namespace picturetest {
namespace {

using items_test::Narrow;
using items_test::Quoted;

class PicturePixels : public PicturesTest {
  protected:
    // A container as the host stores the file `name` with these bytes.
    static std::u16string Container(const std::string& bytes, const std::u16string& name) {
        return u"Base64Decode( \"" + Base64(bytes) + u"\" ; " + Quoted(name) + u" )";
    }
};

TEST_F(PicturePixels, MeasuresFilesAndContainerPictures) {
    const struct {
        Format format;
        const char16_t* name;
    } formats[] = {{Format::kJpeg, u"p.jpg"},
                   {Format::kPng, u"p.png"},
                   {Format::kGif, u"p.gif"},
                   {Format::kBmp, u"p.bmp"}};
    for (const auto& f : formats) {
        const std::string bytes = MakePicture(f.format, 321, 123);
        writeFile(f.name, bytes);
        for (const std::u16string& argument : {Quoted(f.name), Container(bytes, f.name)}) {
            const std::u16string calculation =
                u"VFile_Get( \"picture-pixels\" ; " + argument + u" )";
            EXPECT_EQ(call(calculation),
                      "321.000000\r123.000000 | No Error Message | No Error Message")
                << Narrow(f.name);
        }
    }
}

TEST_F(PicturePixels, RefusesWhatHoldsNoPicture) {
    writeFile(u"note.txt", "not a picture");
    const std::string png = MakePicture(Format::kPng, 40, 30);
    const struct {
        std::u16string argument;
        std::string expected;
    } cases[] = {
        {Quoted(u"missing.png"), Failed(-43, "Item does not exist")},
        {Quoted(u"note.txt"), Failed(-50, "This is not a picture.")},
        {u"5", Failed(-50, "Path parameter must be text")},
        {Container("not a picture", u"note.txt"), Failed(-50, "No picture in container")},
        // The host takes a PNG header for a picture; what follows cannot be decoded.
        {Container(png.substr(0, 41), u"cut.png"), Failed(-50, "This is not a picture.")},
    };
    for (const auto& c : cases) {
        const std::u16string calculation = u"VFile_Get( \"picture-pixels\" ; " + c.argument + u" )";
        EXPECT_EQ(call(calculation), c.expected) << Narrow(c.argument);
    }
    EXPECT_EQ(call(uR"(VFile_Get( "picture-pixels" ))"), Failed(-50, "Not enough parameters"));
}

}  // namespace
}  // namespace picturetest
