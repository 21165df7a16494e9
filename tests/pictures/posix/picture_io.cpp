#include "picture_io.h"

#include <string_view>

#include "foundation/exception.h"
#include "picture/posix/picture_codecs.h"

namespace picturetest {

std::string EncodePixels(const wchar_t* mimeType, const Pixels& pixels) {
    const std::wstring_view mime(mimeType);
    const slib::PictureFormat format = mime == L"image/jpeg"   ? slib::PictureFormat::kJpeg
                                       : mime == L"image/gif"  ? slib::PictureFormat::kGif
                                       : mime == L"image/bmp"  ? slib::PictureFormat::kBmp
                                       : mime == L"image/tiff" ? slib::PictureFormat::kTiff
                                                               : slib::PictureFormat::kPng;
    slib::Raster raster;
    raster.width = pixels.width;
    raster.height = pixels.height;
    for (const uint32_t argb : pixels.argb) {
        raster.rgba.insert(raster.rgba.end(), {uint8_t(argb >> 16), uint8_t(argb >> 8),
                                               uint8_t(argb), uint8_t(argb >> 24)});
        raster.hasAlpha = raster.hasAlpha || argb >> 24 != 0xFF;
    }
    const std::vector<uint8_t> bytes = slib::EncodePictureBytes(raster, format);
    return std::string(bytes.begin(), bytes.end());
}

std::optional<Pixels> DecodePixels(const std::string& bytes) {
    try {
        const slib::Raster raster =
            slib::DecodePictureBytes(std::vector<uint8_t>(bytes.begin(), bytes.end())).raster;
        Pixels pixels{raster.width, raster.height, {}};
        for (size_t i = 0; i < raster.rgba.size(); i += 4) {
            const uint8_t* p = &raster.rgba[i];
            pixels.argb.push_back(uint32_t{p[3]} << 24 | uint32_t{p[0]} << 16 |
                                  uint32_t{p[1]} << 8 | p[2]);
        }
        return pixels;
    } catch (const slib::Exception&) {
        return std::nullopt;
    }
}

}  // namespace picturetest
