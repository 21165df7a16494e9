#include "picture/picture_pixels.h"

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "picture/picture_file.h"
#include "picture/windows/gdiplus_session.h"
#include "picture/windows/picture_codec.h"

namespace slib {

PictureDimensions MeasurePictureBytes(const std::vector<uint8_t>& bytes) {
    StartGdiplus();
    const UniqueGdipBitmap picture = DecodePicture(bytes);
    if (!picture) {
        Throw(kBadParameter, "This is not a picture.");
    }
    return MeasurePicture(picture.get());
}

PictureDimensions MeasurePictureFile(const String& path, const char* missingMessage) {
    const std::vector<uint8_t> bytes = ReadPictureFile(path, missingMessage);
    StartGdiplus();
    const UniqueGdipBitmap picture = LoadPicture(bytes);
    return MeasurePicture(picture.get());
}

}  // namespace slib
