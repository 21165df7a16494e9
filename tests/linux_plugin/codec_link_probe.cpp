// Linked in the plug-in's form beside it, this object names every decoder and encoder, so every
// codec library's archive members go in: the binary check then proves that they need nothing but
// glibc up to Ubuntu 22.04's, before (and whether or not) a picture function calls them.
#include <cstdint>
#include <vector>

#include "picture/posix/picture_codecs.h"

namespace {

[[maybe_unused]] __attribute__((used)) void UseEveryCodec(const std::vector<uint8_t>& bytes) {
    const slib::DecodedPicture picture = slib::DecodePictureBytes(bytes);
    slib::MeasurePictureHeader(bytes);
    for (const slib::PictureFormat format :
         {slib::PictureFormat::kJpeg, slib::PictureFormat::kPng, slib::PictureFormat::kGif,
          slib::PictureFormat::kBmp, slib::PictureFormat::kTiff}) {
        slib::EncodePictureBytes(picture.raster, format);
    }
}

}  // namespace
