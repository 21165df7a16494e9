#include "picture/picture_pixels.h"

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "picture/picture_file.h"
#include "picture/posix/picture_codecs.h"

namespace slib {
namespace {

PictureDimensions SizeOf(const Raster& raster) {
    return {static_cast<double>(raster.width), static_cast<double>(raster.height)};
}

}  // namespace

// Decoded in full, as on Windows, where any bytes that do not decode are no picture (one cut
// short after its header included); a format this build cannot read keeps its own answer.
PictureDimensions MeasurePictureBytes(const std::vector<uint8_t>& bytes) {
    try {
        return SizeOf(DecodePictureBytes(bytes).raster);
    } catch (const Exception& failure) {
        if (failure.error()->code() != kBadParameter) {
            throw;
        }
        Throw(kBadParameter, "This is not a picture.");
    }
}

PictureDimensions MeasurePictureFile(const String& path, const char* missingMessage) {
    return SizeOf(DecodePictureBytes(ReadPictureFile(path, missingMessage)).raster);
}

}  // namespace slib
