#include "bridge/picture_preview.h"

#include <windows.h>

#include <shlwapi.h>

#include "foundation/windows/unique_handles.h"

namespace bridge {

namespace {

// GDI+'s built-in PNG encoder.
constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

std::vector<uint8_t> StreamBytes(IStream* stream) {
    STATSTG stat{};
    LARGE_INTEGER start{};
    if (FAILED(stream->Stat(&stat, STATFLAG_NONAME)) ||
        FAILED(stream->Seek(start, STREAM_SEEK_SET, nullptr)) ||
        stat.cbSize.QuadPart > 0xFFFFFFFFu) {
        return {};
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(stat.cbSize.QuadPart));
    ULONG read = 0;
    if (FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read))) {
        return {};
    }
    bytes.resize(read);
    return bytes;
}

}  // namespace

std::vector<uint8_t> PngPreview(const slib::Data& picture) {
    using namespace Gdiplus::DllExports;
    Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) {
        return {};
    }
    // Declared first, so the image is disposed of before GDI+ shuts down.
    const slib::UniqueGdiplusSession session(token);
    const slib::UniqueStream source(
        SHCreateMemStream(picture.bytes().data(), static_cast<UINT>(picture.size())));
    const slib::UniqueStream target(SHCreateMemStream(nullptr, 0));
    if (!source.valid() || !target.valid()) {
        return {};
    }
    Gdiplus::GpBitmap* bitmap = nullptr;
    if (GdipCreateBitmapFromStream(source.get(), &bitmap) != Gdiplus::Ok) {
        return {};
    }
    const slib::UniqueGdiplusImage image(bitmap);
    if (GdipSaveImageToStream(image.get(), target.get(), &kPngEncoder, nullptr) != Gdiplus::Ok) {
        return {};
    }
    return StreamBytes(target.get());
}

}  // namespace bridge
