#include "bridge/picture_preview.h"

#include "picture/windows/gdiplus_session.h"
#include "picture/windows/picture_codec.h"

namespace bridge {

std::vector<uint8_t> PngPreview(const slib::Data& picture) {
    slib::StartGdiplus();
    const slib::UniqueGdipBitmap bitmap = slib::DecodePicture(picture.bytes());
    if (!bitmap.valid()) {
        return {};
    }
    return slib::EncodePicture(bitmap.get(), L"image/png");
}

}  // namespace bridge
