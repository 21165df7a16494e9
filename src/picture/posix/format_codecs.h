#pragma once
// One decoder, header reader and encoder per format, behind the signature dispatch of
// picture_codecs.cpp. Each decoder throws the errors of DecodePictureBytes; each encoder throws
// 2400 "Cannot save the picture" and leaves checking its result to the dispatch.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "picture/picture_pixels.h"
#include "picture/raster.h"

namespace slib {

struct PictureBytes {
    const uint8_t* data;
    size_t size;
};

struct OrientedRaster {
    Raster raster;
    std::optional<uint16_t> orientation;
};

OrientedRaster DecodeJpeg(PictureBytes bytes);
PictureDimensions MeasureJpeg(PictureBytes bytes);
std::vector<uint8_t> EncodeJpeg(const Raster& raster);

OrientedRaster DecodePng(PictureBytes bytes);
PictureDimensions MeasurePng(PictureBytes bytes);
std::vector<uint8_t> EncodePng(const Raster& raster);

OrientedRaster DecodeGif(PictureBytes bytes);
PictureDimensions MeasureGif(PictureBytes bytes);
std::vector<uint8_t> EncodeGif(const Raster& raster);

OrientedRaster DecodeBmp(PictureBytes bytes);
PictureDimensions MeasureBmp(PictureBytes bytes);
std::vector<uint8_t> EncodeBmp(const Raster& raster);

OrientedRaster DecodeTiff(PictureBytes bytes);
PictureDimensions MeasureTiff(PictureBytes bytes);
std::vector<uint8_t> EncodeTiff(const Raster& raster);

// True when some pixel is less than opaque: every decoder sets Raster::hasAlpha through it.
bool AnyTranslucentPixel(const Raster& raster);

}  // namespace slib
