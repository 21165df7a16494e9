// VFile_Get( "picture-pixels" ) on picture files and on pictures held in containers.
#include "pictures_e2e.h"

namespace picturetest {
namespace {

using PicturePixels = PicturesTest;

// A container as the host stores the file `name` holding these bytes.
std::u16string Container(const std::string& bytes, const std::u16string& name) {
    return u"Base64Decode( \"" + Base64(bytes) + u"\" ; " + Quoted(name) + u" )";
}

TEST_F(PicturePixels, MeasuresFilesAndContainerPicturesAndRefusesTheRest) {
    const std::string size = "321.000000\r123.000000 | No Error Message | No Error Message";
    const std::string png = MakePicture(L"image/png", 321, 123);
    writeFile(u"p.png", png);
    writeFile(u"note.txt", "not a picture");
    const struct {
        std::u16string argument;
        std::string expected;
    } cases[] = {
        {Quoted(u"p.png"), size},
        {Container(png, u"p.png"), size},
        {Container(MakePicture(L"image/jpeg", 321, 123), u"p.jpg"), size},
        {Container(MakePicture(L"image/gif", 321, 123), u"p.gif"), size},
        {Container(MakePicture(L"image/bmp", 321, 123), u"p.bmp"), size},
        {Quoted(u"missing.png"), Failed(-43, "Item does not exist")},
        {Quoted(u"note.txt"), Failed(-50, "This is not a picture.")},
        {u"5", Failed(-50, "Path parameter must be text")},
        {Container("not a picture", u"note.txt"), Failed(-50, "No picture in container")},
        // The host stores a PNG header as a picture; what follows cannot be decoded.
        {Container(png.substr(0, 41), u"cut.png"), Failed(-50, "This is not a picture.")},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(call(u"VFile_Get( \"picture-pixels\" ; " + c.argument + u" )"), c.expected)
            << Narrow(c.argument.substr(0, 40));
    }
    EXPECT_EQ(call(uR"(VFile_Get( "picture-pixels" ))"), Failed(-50, "Not enough parameters"));
}

}  // namespace
}  // namespace picturetest
