#pragma once
// Pictures from bytes and back, through the codec libraries linked into the Linux plug-in
// (libjpeg-turbo, libpng, giflib, libtiff). The bytes are untrusted: every decoder checks the
// declared size before it allocates and turns a library's failure into an error, never an abort.

#include <cstdint>
#include <optional>
#include <vector>

#include "picture/picture_pixels.h"
#include "picture/raster.h"

namespace slib {

enum class PictureFormat { kJpeg, kPng, kGif, kBmp, kTiff };

struct DecodedPicture {
    Raster raster;                         // the first frame or page, as stored (not turned)
    PictureFormat format;                  // what the bytes were
    std::optional<uint16_t> orientation;   // the EXIF (JPEG) or TIFF orientation, when recorded
};

// -50 "This is not a picture." for bytes without a picture signature, -50 "Picture data is
// damaged" for a picture that does not decode (cut short, a format this engine cannot read),
// -50 "Cannot create a picture of that size" when the declared size is beyond the limits the
// converter enforces.
DecodedPicture DecodePictureBytes(const std::vector<uint8_t>& bytes);

// The pixel size from the header alone, with the errors of DecodePictureBytes.
PictureDimensions MeasurePictureHeader(const std::vector<uint8_t>& bytes);

// `raster` in `format` with the encoder's default settings (JPEG quality 75; GIF through the
// shared palette quantizer). The result is decoded again to check it: 2400 "Cannot save the
// picture" when it is empty or unreadable.
std::vector<uint8_t> EncodePictureBytes(const Raster& raster, PictureFormat format);

}  // namespace slib
