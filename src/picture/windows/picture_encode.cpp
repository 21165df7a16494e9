// Encoding pictures into bytes (declared in picture_codec.h).
#include <cmath>
#include <cstring>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "picture/palette_quantizer.h"
#include "picture/windows/picture_codec.h"

namespace slib {
namespace {

namespace gdip = Gdiplus::DllExports;

[[noreturn]] void ThrowSaveFailure() {
    Throw(kUnclassified, "Cannot save the picture");
}

CLSID EncoderFor(const std::wstring& mimeType) {
    UINT count = 0;
    UINT size = 0;
    if (gdip::GdipGetImageEncodersSize(&count, &size) != Gdiplus::Ok || count == 0) {
        ThrowSaveFailure();
    }
    std::vector<uint64_t> storage((size + sizeof(uint64_t) - 1) / sizeof(uint64_t));
    auto* codecs = reinterpret_cast<Gdiplus::ImageCodecInfo*>(storage.data());
    if (gdip::GdipGetImageEncoders(count, size, codecs) != Gdiplus::Ok) {
        ThrowSaveFailure();
    }
    for (UINT i = 0; i < count; ++i) {
        if (codecs[i].MimeType != nullptr && mimeType == codecs[i].MimeType) {
            return codecs[i].Clsid;
        }
    }
    ThrowSaveFailure();
}

// An 8-bit indexed copy of the bitmap. The pixels are copied while the bits are locked and
// nothing in between can throw, so every lock is released.
UniqueGdipBitmap IndexedCopy(Gdiplus::GpBitmap* bitmap, UINT width, UINT height) {
    const Gdiplus::GpRect rect(0, 0, static_cast<INT>(width), static_cast<INT>(height));
    const size_t stride = size_t{width} * sizeof(uint32_t);
    std::vector<uint8_t> pixels(stride * height);
    Gdiplus::BitmapData locked{};
    if (gdip::GdipBitmapLockBits(bitmap, &rect, Gdiplus::ImageLockModeRead, PixelFormat32bppARGB,
                                 &locked) != Gdiplus::Ok) {
        ThrowSaveFailure();
    }
    for (UINT y = 0; y < height; ++y) {
        std::memcpy(pixels.data() + y * stride,
                    static_cast<const uint8_t*>(locked.Scan0) + ptrdiff_t{locked.Stride} * y,
                    stride);
    }
    gdip::GdipBitmapUnlockBits(bitmap, &locked);

    const IndexedPixels indexed = QuantizeToPalette(pixels.data(), width, height, stride);
    UniqueGdipBitmap copy;
    if (gdip::GdipCreateBitmapFromScan0(static_cast<INT>(width), static_cast<INT>(height), 0,
                                        PixelFormat8bppIndexed, nullptr,
                                        copy.put()) != Gdiplus::Ok) {
        ThrowSaveFailure();
    }
    // ColorPalette: flags, count, then the entries.
    std::vector<uint32_t> palette{0, static_cast<uint32_t>(indexed.palette.size())};
    palette.insert(palette.end(), indexed.palette.begin(), indexed.palette.end());
    if (gdip::GdipSetImagePalette(copy.get(), reinterpret_cast<const Gdiplus::ColorPalette*>(
                                                  palette.data())) != Gdiplus::Ok) {
        ThrowSaveFailure();
    }
    if (gdip::GdipBitmapLockBits(copy.get(), &rect, Gdiplus::ImageLockModeWrite,
                                 PixelFormat8bppIndexed, &locked) != Gdiplus::Ok) {
        ThrowSaveFailure();
    }
    for (UINT y = 0; y < height; ++y) {
        std::memcpy(static_cast<uint8_t*>(locked.Scan0) + ptrdiff_t{locked.Stride} * y,
                    indexed.indices.data() + size_t{y} * width, width);
    }
    gdip::GdipBitmapUnlockBits(copy.get(), &locked);
    return copy;
}

std::vector<uint8_t> StreamBytes(IStream* stream) {
    STATSTG stat{};
    if (FAILED(stream->Stat(&stat, STATFLAG_NONAME)) || stat.cbSize.QuadPart == 0 ||
        stat.cbSize.QuadPart > UINT_MAX) {
        ThrowSaveFailure();
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(stat.cbSize.QuadPart));
    const LARGE_INTEGER start{};
    ULONG got = 0;
    if (FAILED(stream->Seek(start, STREAM_SEEK_SET, nullptr)) ||
        FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &got)) ||
        got != bytes.size()) {
        ThrowSaveFailure();
    }
    return bytes;
}

}  // namespace

std::vector<uint8_t> EncodePicture(Gdiplus::GpBitmap* bitmap, const std::wstring& mimeType) {
    const CLSID encoder = EncoderFor(mimeType);
    const PictureDimensions size = MeasurePicture(bitmap);
    const UINT width = static_cast<UINT>(std::lround(size.width));
    const UINT height = static_cast<UINT>(std::lround(size.height));

    UniqueGdipBitmap indexed;
    if (mimeType == L"image/gif") {
        indexed = IndexedCopy(bitmap, width, height);
        bitmap = indexed.get();
    }
    UniqueStream stream;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())) ||
        gdip::GdipSaveImageToStream(bitmap, stream.get(), &encoder, nullptr) != Gdiplus::Ok) {
        ThrowSaveFailure();
    }
    std::vector<uint8_t> bytes = StreamBytes(stream.get());

    const UniqueGdipBitmap check = DecodePicture(bytes);
    if (!check) {
        ThrowSaveFailure();
    }
    const PictureDimensions written = MeasurePicture(check.get());
    if (std::lround(written.width) != static_cast<long>(width) ||
        std::lround(written.height) != static_cast<long>(height)) {
        ThrowSaveFailure();
    }
    return bytes;
}

}  // namespace slib
