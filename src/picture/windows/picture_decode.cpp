// Decoding and inspecting pictures (declared in picture_codec.h).
#include <shlwapi.h>

#include <cstring>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "picture/jpeg_exif.h"
#include "picture/picture_signature.h"
#include "picture/windows/picture_codec.h"

namespace slib {
namespace {

namespace gdip = Gdiplus::DllExports;

// GDI+'s raw format identifiers differ only in their first field.
constexpr GUID RawFormat(unsigned long first) {
    return {first, 0x0728, 0x11d3, {0x9d, 0x7b, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
}

struct FormatMime {
    GUID format;
    const wchar_t* mime;
};

const FormatMime kSourceFormats[] = {
    {RawFormat(0xb96b3cae), L"image/jpeg"}, {RawFormat(0xb96b3caf), L"image/png"},
    {RawFormat(0xb96b3cb0), L"image/gif"},  {RawFormat(0xb96b3cab), L"image/bmp"},
    {RawFormat(0xb96b3cb1), L"image/tiff"},
};

constexpr WORD kPropertyTypeShort = 3;

}  // namespace

UniqueGdipBitmap DecodePicture(const std::vector<uint8_t>& bytes) {
    UniqueGdipBitmap bitmap;
    if (bytes.empty() || bytes.size() > UINT_MAX) {
        return bitmap;
    }
    UniqueStream stream(SHCreateMemStream(bytes.data(), static_cast<UINT>(bytes.size())));
    if (!stream) {
        return bitmap;
    }
    if (gdip::GdipCreateBitmapFromStreamICM(stream.get(), bitmap.put()) != Gdiplus::Ok) {
        bitmap.reset();
    }
    return bitmap;
}

UniqueGdipBitmap LoadPicture(const std::vector<uint8_t>& bytes) {
    UniqueGdipBitmap bitmap = DecodePicture(bytes);
    if (!bitmap) {
        if (!HasPictureSignature(bytes.data(), bytes.size())) {
            Throw(kBadParameter, "This is not a picture.");
        }
        Throw(kBadParameter, "Picture data is damaged");
    }
    return bitmap;
}

PictureDimensions MeasurePicture(Gdiplus::GpBitmap* bitmap) {
    Gdiplus::REAL width = 0;
    Gdiplus::REAL height = 0;
    if (gdip::GdipGetImageDimension(bitmap, &width, &height) != Gdiplus::Ok) {
        Throw(kUnclassified, "Cannot measure the picture");
    }
    return {width, height};
}

std::wstring SourceMimeType(Gdiplus::GpBitmap* bitmap) {
    GUID format{};
    if (gdip::GdipGetImageRawFormat(bitmap, &format) == Gdiplus::Ok) {
        for (const FormatMime& known : kSourceFormats) {
            if (IsEqualGUID(format, known.format)) {
                return known.mime;
            }
        }
    }
    return L"image/jpeg";
}

std::optional<uint16_t> PictureOrientation(Gdiplus::GpBitmap* bitmap,
                                           const std::vector<uint8_t>& bytes) {
    UINT size = 0;
    if (gdip::GdipGetPropertyItemSize(bitmap, kExifOrientationTag, &size) == Gdiplus::Ok &&
        size >= sizeof(Gdiplus::PropertyItem) + sizeof(uint16_t)) {
        std::vector<uint64_t> storage((size + sizeof(uint64_t) - 1) / sizeof(uint64_t));
        auto* item = reinterpret_cast<Gdiplus::PropertyItem*>(storage.data());
        if (gdip::GdipGetPropertyItem(bitmap, kExifOrientationTag, size, item) == Gdiplus::Ok &&
            item->type == kPropertyTypeShort && item->length >= sizeof(uint16_t) &&
            item->value != nullptr) {
            uint16_t orientation;
            std::memcpy(&orientation, item->value, sizeof(orientation));
            return orientation;
        }
    }
    return FindJpegExifOrientation(bytes.data(), bytes.size());
}

}  // namespace slib
