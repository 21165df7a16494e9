#include "picture_io.h"

#include "picture/windows/gdiplus_session.h"
#include "picture/windows/picture_codec.h"

namespace picturetest {

namespace gdip = Gdiplus::DllExports;

std::string EncodePixels(const wchar_t* mimeType, const Pixels& pixels) {
    slib::StartGdiplus();
    std::vector<uint32_t> copy = pixels.argb;
    slib::UniqueGdipBitmap bitmap;
    gdip::GdipCreateBitmapFromScan0(static_cast<INT>(pixels.width), static_cast<INT>(pixels.height),
                                    static_cast<INT>(pixels.width * 4), PixelFormat32bppARGB,
                                    reinterpret_cast<BYTE*>(copy.data()), bitmap.put());
    const std::vector<uint8_t> bytes = slib::EncodePicture(bitmap.get(), mimeType);
    return std::string(bytes.begin(), bytes.end());
}

std::optional<Pixels> DecodePixels(const std::string& bytes) {
    slib::StartGdiplus();
    const slib::UniqueGdipBitmap bitmap =
        slib::DecodePicture(std::vector<uint8_t>(bytes.begin(), bytes.end()));
    UINT width = 0, height = 0;
    if (!bitmap || gdip::GdipGetImageWidth(bitmap.get(), &width) != Gdiplus::Ok ||
        gdip::GdipGetImageHeight(bitmap.get(), &height) != Gdiplus::Ok) {
        return std::nullopt;
    }
    Pixels pixels{width, height, std::vector<uint32_t>(size_t{width} * height)};
    for (UINT y = 0; y < height; ++y) {
        for (UINT x = 0; x < width; ++x) {
            Gdiplus::ARGB pixel = 0;
            gdip::GdipBitmapGetPixel(bitmap.get(), x, y, &pixel);
            pixels.argb[size_t{y} * width + x] = pixel;
        }
    }
    return pixels;
}

}  // namespace picturetest
