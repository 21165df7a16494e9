#include "test_pictures.h"

#include <windows.h>

#include <shlwapi.h>

#include <cstring>
#include <stdexcept>
#include <vector>

#include "exif_segment.h"
#include "foundation/windows/unique_handles.h"
#include "picture/jpeg_exif.h"

namespace picturetest {
namespace {

namespace gdip = Gdiplus::DllExports;

const uint32_t kColours[4] = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFF00};  // R G B Y
const char kLetters[] = "RGBY";

// Test-side start of GDI+ for the whole test program; never shut down before exit.
void EnsureGdiplus() {
    static ULONG_PTR token = [] {
        const Gdiplus::GdiplusStartupInput input;
        ULONG_PTR started = 0;
        if (Gdiplus::GdiplusStartup(&started, &input, nullptr) != Gdiplus::Ok) {
            throw std::runtime_error("GDI+ does not start");
        }
        return started;
    }();
    (void)token;
}

void Check(Gdiplus::GpStatus status, const char* what) {
    if (status != Gdiplus::Ok) {
        throw std::runtime_error(std::string(what) + " failed with status " +
                                 std::to_string(status));
    }
}

// Where a stored pixel shows once the orientation's turn is applied (stored size sw x sh).
void Displayed(uint16_t orientation, int x, int y, int sw, int sh, int& dx, int& dy) {
    switch (orientation) {
        case 2:
            dx = sw - 1 - x;
            dy = y;
            break;
        case 3:
            dx = sw - 1 - x;
            dy = sh - 1 - y;
            break;
        case 4:
            dx = x;
            dy = sh - 1 - y;
            break;
        case 5:
            dx = y;
            dy = x;
            break;
        case 6:
            dx = sh - 1 - y;
            dy = x;
            break;
        case 7:
            dx = sh - 1 - y;
            dy = sw - 1 - x;
            break;
        case 8:
            dx = y;
            dy = sw - 1 - x;
            break;
        default:
            dx = x;
            dy = y;
            break;
    }
}

int Quadrant(int x, int y, int width, int height) {
    return (y * 2 >= height ? 2 : 0) + (x * 2 >= width ? 1 : 0);
}

const wchar_t* MimeOf(Format format) {
    switch (format) {
        case Format::kJpeg:
            return L"image/jpeg";
        case Format::kPng:
            return L"image/png";
        case Format::kGif:
            return L"image/gif";
        case Format::kBmp:
            return L"image/bmp";
        case Format::kTiff:
            return L"image/tiff";
    }
    return L"";
}

CLSID Encoder(const wchar_t* mime) {
    UINT count = 0;
    UINT size = 0;
    Check(gdip::GdipGetImageEncodersSize(&count, &size), "GdipGetImageEncodersSize");
    std::vector<uint64_t> storage(size / sizeof(uint64_t) + 1);
    auto* codecs = reinterpret_cast<Gdiplus::ImageCodecInfo*>(storage.data());
    Check(gdip::GdipGetImageEncoders(count, size, codecs), "GdipGetImageEncoders");
    for (UINT i = 0; i < count; ++i) {
        if (wcscmp(codecs[i].MimeType, mime) == 0) {
            return codecs[i].Clsid;
        }
    }
    throw std::runtime_error("no encoder");
}

std::string StreamContent(IStream* stream) {
    STATSTG stat{};
    stream->Stat(&stat, STATFLAG_NONAME);
    std::string bytes(static_cast<size_t>(stat.cbSize.QuadPart), '\0');
    const LARGE_INTEGER start{};
    ULONG got = 0;
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &got);
    return bytes;
}

char Nearest(uint32_t argb) {
    int best = -1;
    int bestDistance = 3 * 90 * 90;  // farther than this from every quadrant colour is none
    for (int i = 0; i < 4; ++i) {
        int distance = 0;
        for (int shift = 0; shift <= 16; shift += 8) {
            const int d = static_cast<int>((argb >> shift) & 0xFF) -
                          static_cast<int>((kColours[i] >> shift) & 0xFF);
            distance += d * d;
        }
        if (distance < bestDistance) {
            bestDistance = distance;
            best = i;
        }
    }
    return best < 0 ? '?' : kLetters[best];
}

}  // namespace

std::string MakePicture(Format format, int width, int height, uint16_t orientation,
                        bool bigEndianExif) {
    EnsureGdiplus();
    const bool sideways = orientation >= 5 && orientation <= 8;
    const int sw = sideways ? height : width;
    const int sh = sideways ? width : height;
    // GIF gets indexed pixels: GDI+ under Wine writes no GIF from true-colour ones.
    const bool indexed = format == Format::kGif;
    slib::UniqueGdipBitmap bitmap;
    Check(gdip::GdipCreateBitmapFromScan0(sw, sh, 0,
                                          indexed ? PixelFormat8bppIndexed : PixelFormat32bppARGB,
                                          nullptr, bitmap.put()),
          "GdipCreateBitmapFromScan0");
    if (indexed) {
        uint32_t palette[2 + 4] = {0, 4, kColours[0], kColours[1], kColours[2], kColours[3]};
        Check(gdip::GdipSetImagePalette(bitmap.get(),
                                        reinterpret_cast<Gdiplus::ColorPalette*>(palette)),
              "GdipSetImagePalette");
    }
    const Gdiplus::GpRect rect(0, 0, sw, sh);
    Gdiplus::BitmapData data{};
    Check(gdip::GdipBitmapLockBits(bitmap.get(), &rect, Gdiplus::ImageLockModeWrite,
                                   indexed ? PixelFormat8bppIndexed : PixelFormat32bppARGB, &data),
          "GdipBitmapLockBits");
    for (int y = 0; y < sh; ++y) {
        auto* row = static_cast<uint8_t*>(data.Scan0) + static_cast<ptrdiff_t>(data.Stride) * y;
        for (int x = 0; x < sw; ++x) {
            int dx = 0;
            int dy = 0;
            Displayed(orientation, x, y, sw, sh, dx, dy);
            const int quadrant = Quadrant(dx, dy, width, height);
            if (indexed) {
                row[x] = static_cast<uint8_t>(quadrant);
            } else {
                std::memcpy(row + 4 * x, &kColours[quadrant], 4);
            }
        }
    }
    gdip::GdipBitmapUnlockBits(bitmap.get(), &data);

    slib::UniqueStream stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    const CLSID encoder = Encoder(MimeOf(format));
    Check(gdip::GdipSaveImageToStream(bitmap.get(), stream.get(), &encoder, nullptr),
          "GdipSaveImageToStream");
    std::string bytes = StreamContent(stream.get());
    if (orientation != 0 && format == Format::kJpeg) {
        bytes = SpliceAfterStart(bytes, ExifApp1(orientation, bigEndianExif, 2));
    }
    return bytes;
}

Inspection Inspect(const std::string& bytes) {
    EnsureGdiplus();
    Inspection inspection;
    const auto starts = [&](const char* signature, size_t length) {
        return bytes.size() >= length && bytes.compare(0, length, signature, length) == 0;
    };
    inspection.format = starts("\xFF\xD8\xFF", 3)                  ? "jpeg"
                        : starts("\x89PNG", 4)                     ? "png"
                        : starts("GIF8", 4)                        ? "gif"
                        : starts("BM", 2)                          ? "bmp"
                        : starts("II*\0", 4) || starts("MM\0*", 4) ? "tiff"
                                                                   : "?";
    const auto* raw = reinterpret_cast<const uint8_t*>(bytes.data());
    inspection.hasOrientation = slib::FindJpegExifOrientation(raw, bytes.size()).has_value();

    const slib::UniqueStream stream(SHCreateMemStream(raw, static_cast<UINT>(bytes.size())));
    slib::UniqueGdipBitmap bitmap;
    if (!stream || gdip::GdipCreateBitmapFromStream(stream.get(), bitmap.put()) != Gdiplus::Ok) {
        return inspection;
    }
    UINT width = 0;
    UINT height = 0;
    gdip::GdipGetImageWidth(bitmap.get(), &width);
    gdip::GdipGetImageHeight(bitmap.get(), &height);
    inspection.width = static_cast<int>(width);
    inspection.height = static_cast<int>(height);
    for (int quadrant = 0; quadrant < 4; ++quadrant) {
        const int x = static_cast<int>(width) * (1 + 2 * (quadrant % 2)) / 4;
        const int y = static_cast<int>(height) * (1 + 2 * (quadrant / 2)) / 4;
        Gdiplus::ARGB pixel = 0;
        gdip::GdipBitmapGetPixel(bitmap.get(), x, y, &pixel);
        inspection.quadrants += Nearest(pixel);
    }
    return inspection;
}

std::string Describe(const Inspection& inspection) {
    return inspection.format + " " + std::to_string(inspection.width) + "x" +
           std::to_string(inspection.height) + " " + inspection.quadrants;
}

std::u16string Base64(const std::string& bytes) {
    static const char kDigits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::u16string text;
    for (size_t i = 0; i < bytes.size(); i += 3) {
        uint32_t group = static_cast<uint8_t>(bytes[i]) << 16;
        if (i + 1 < bytes.size()) {
            group |= static_cast<uint8_t>(bytes[i + 1]) << 8;
        }
        if (i + 2 < bytes.size()) {
            group |= static_cast<uint8_t>(bytes[i + 2]);
        }
        for (size_t digit = 0; digit < 4; ++digit) {
            text += digit <= bytes.size() - i ? kDigits[(group >> (18 - 6 * digit)) & 63] : '=';
        }
    }
    return text;
}

}  // namespace picturetest
