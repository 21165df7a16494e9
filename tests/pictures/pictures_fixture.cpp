#include "pictures_fixture.h"

namespace picturetest {

std::string PicturesTest::picture(const std::u16string& relative) const {
    const std::optional<std::string> bytes = readFile(relative);
    return bytes ? Describe(Inspect(*bytes)) : "no file";
}

bool PicturesTest::keepsOrientation(const std::u16string& relative) const {
    const std::optional<std::string> bytes = readFile(relative);
    return bytes && Inspect(*bytes).hasOrientation;
}

}  // namespace picturetest
