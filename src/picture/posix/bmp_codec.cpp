// Our own BMP reader and writer: the format is simple enough that a library would add more risk
// than it removes. Reads the core (12-byte), info (40), V2/V3 (52/56), V4 (108) and V5 (124)
// headers at 1, 4, 8, 16, 24 and 32 bits, bottom-up and top-down, BI_RGB and bit fields. The
// run-length compressions are not read: they answer "Picture data is damaged".
#include <algorithm>
#include <cstdlib>
#include <limits>

#include "picture/posix/codec_errors.h"
#include "picture/posix/decode_size_limit.h"
#include "picture/posix/format_codecs.h"

namespace slib {
namespace {

constexpr size_t kFileHeaderSize = 14;
constexpr uint32_t kCoreHeaderSize = 12;
constexpr uint32_t kInfoHeaderSize = 40;
constexpr uint32_t kV4HeaderSize = 108;
constexpr uint32_t kRgb = 0;
constexpr uint32_t kBitFields = 3;
constexpr uint32_t kAlphaBitFields = 6;
constexpr uint32_t kPixelsPerMetreAt96Dpi = 3780;
constexpr uint32_t kSrgbColourSpace = 0x73524742;  // 'sRGB'

uint32_t Le(const uint8_t* p, int count) {
    uint32_t value = 0;
    for (int i = count - 1; i >= 0; --i) {
        value = (value << 8) | p[i];
    }
    return value;
}

struct Mask {
    uint32_t bits = 0;
    int shift = 0;
    uint32_t max = 0;
};

Mask MaskOf(uint32_t bits) {
    Mask mask{bits, 0, 0};
    if (bits != 0) {
        while (((bits >> mask.shift) & 1u) == 0) {
            ++mask.shift;
        }
        mask.max = bits >> mask.shift;
    }
    return mask;
}

uint8_t Channel(uint32_t pixel, const Mask& mask, uint8_t absent) {
    if (mask.bits == 0) {
        return absent;
    }
    const uint64_t value = (pixel & mask.bits) >> mask.shift;
    return static_cast<uint8_t>((value * 255 + mask.max / 2) / mask.max);
}

struct BmpLayout {
    uint32_t width = 0;
    uint32_t height = 0;
    bool topDown = false;
    uint32_t bits = 0;
    Mask red, green, blue, alpha;
    size_t paletteOffset = 0;
    size_t paletteEntrySize = 4;
    size_t paletteCount = 0;
    size_t pixelOffset = 0;
    uint64_t stride = 0;
};

class HeaderReader {
  public:
    explicit HeaderReader(PictureBytes bytes) : bytes_(bytes) {}
    uint32_t at(size_t offset, int count) const {
        if (offset + count > bytes_.size) {
            ThrowPictureDamaged();
        }
        return Le(bytes_.data + offset, count);
    }

  private:
    PictureBytes bytes_;
};

void ReadMasks(const HeaderReader& header, size_t offset, bool withAlpha, BmpLayout& layout) {
    layout.red = MaskOf(header.at(offset, 4));
    layout.green = MaskOf(header.at(offset + 4, 4));
    layout.blue = MaskOf(header.at(offset + 8, 4));
    layout.alpha = withAlpha ? MaskOf(header.at(offset + 12, 4)) : Mask{};
}

void DefaultMasks(BmpLayout& layout) {
    if (layout.bits == 16) {
        layout.red = MaskOf(0x7C00);
        layout.green = MaskOf(0x03E0);
        layout.blue = MaskOf(0x001F);
    } else {
        layout.red = MaskOf(0xFF0000);
        layout.green = MaskOf(0x00FF00);
        layout.blue = MaskOf(0x0000FF);
    }
}

// Everything but the pixels; throws before anything the size of the picture is allocated.
BmpLayout ReadLayout(PictureBytes bytes) {
    const HeaderReader header(bytes);
    BmpLayout layout;
    layout.pixelOffset = header.at(10, 4);
    const uint32_t headerSize = header.at(14, 4);
    uint32_t compression = kRgb;
    uint32_t coloursUsed = 0;
    int64_t height = 0;
    if (headerSize == kCoreHeaderSize) {
        layout.width = header.at(18, 2);
        height = header.at(20, 2);
        layout.bits = header.at(24, 2);
        layout.paletteEntrySize = 3;
    } else if (headerSize == kInfoHeaderSize || headerSize == 52 || headerSize == 56 ||
               headerSize == kV4HeaderSize || headerSize == 124) {
        const auto width = static_cast<int32_t>(header.at(18, 4));
        height = static_cast<int32_t>(header.at(22, 4));
        layout.width = width > 0 ? static_cast<uint32_t>(width) : 0;
        layout.bits = header.at(28, 2);
        compression = header.at(30, 4);
        coloursUsed = header.at(46, 4);
    } else {
        ThrowPictureDamaged();
    }
    layout.topDown = height < 0;
    layout.height = static_cast<uint32_t>(std::min<int64_t>(std::abs(height), UINT32_MAX));
    RequireDecodableSize(layout.width, layout.height);

    layout.paletteOffset = kFileHeaderSize + headerSize;
    if (compression == kBitFields || compression == kAlphaBitFields) {
        if (layout.bits != 16 && layout.bits != 32) {
            ThrowPictureDamaged();
        }
        if (headerSize == kInfoHeaderSize) {
            const bool withAlpha = compression == kAlphaBitFields;
            ReadMasks(header, kFileHeaderSize + headerSize, withAlpha, layout);
            layout.paletteOffset += withAlpha ? 16 : 12;
        } else {
            ReadMasks(header, kFileHeaderSize + kInfoHeaderSize, headerSize >= 56, layout);
        }
    } else if (compression == kRgb) {
        DefaultMasks(layout);
    } else {
        ThrowPictureDamaged();  // run lengths, embedded JPEG or PNG
    }
    switch (layout.bits) {
        case 1:
        case 4:
        case 8: {
            // Writers disagree on the count (the core header has none): the room before the
            // pixels bounds it.
            const size_t full = size_t{1} << layout.bits;
            const size_t room =
                layout.pixelOffset > layout.paletteOffset
                    ? (layout.pixelOffset - layout.paletteOffset) / layout.paletteEntrySize
                    : 0;
            layout.paletteCount = std::min<size_t>(
                room, coloursUsed == 0 ? full : std::min<size_t>(coloursUsed, full));
            if (layout.paletteOffset + layout.paletteCount * layout.paletteEntrySize > bytes.size) {
                ThrowPictureDamaged();
            }
            break;
        }
        case 16:
        case 24:
        case 32:
            break;
        default:
            ThrowPictureDamaged();
    }
    layout.stride = (uint64_t{layout.bits} * layout.width + 31) / 32 * 4;
    if (layout.pixelOffset > bytes.size ||
        layout.stride * layout.height > bytes.size - layout.pixelOffset) {
        ThrowPictureDamaged();  // cut short
    }
    return layout;
}

void ReadIndexedRow(const uint8_t* in, const BmpLayout& layout, const uint8_t* palette,
                    uint8_t* out) {
    const uint32_t perByte = 8 / layout.bits;
    const uint32_t valueMask = (1u << layout.bits) - 1;
    for (uint32_t x = 0; x < layout.width; ++x) {
        const uint32_t shift = (perByte - 1 - x % perByte) * layout.bits;
        const uint32_t index = (in[x / perByte] >> shift) & valueMask;
        uint8_t* pixel = out + size_t{x} * 4;
        if (index < layout.paletteCount) {
            const uint8_t* entry = palette + index * layout.paletteEntrySize;
            pixel[0] = entry[2];
            pixel[1] = entry[1];
            pixel[2] = entry[0];
        } else {
            pixel[0] = pixel[1] = pixel[2] = 0;  // past the palette: black, never a wild read
        }
        pixel[3] = 0xFF;
    }
}

void ReadDirectRow(const uint8_t* in, const BmpLayout& layout, uint8_t* out) {
    const uint32_t bytesPerPixel = layout.bits / 8;
    for (uint32_t x = 0; x < layout.width; ++x) {
        const uint8_t* source = in + size_t{x} * bytesPerPixel;
        uint8_t* pixel = out + size_t{x} * 4;
        if (layout.bits == 24) {
            pixel[0] = source[2];
            pixel[1] = source[1];
            pixel[2] = source[0];
            pixel[3] = 0xFF;
            continue;
        }
        const uint32_t value = Le(source, static_cast<int>(bytesPerPixel));
        pixel[0] = Channel(value, layout.red, 0);
        pixel[1] = Channel(value, layout.green, 0);
        pixel[2] = Channel(value, layout.blue, 0);
        pixel[3] = Channel(value, layout.alpha, 0xFF);
    }
}

void PutLe(std::vector<uint8_t>& out, uint32_t value, int count) {
    for (int i = 0; i < count; ++i) {
        out.push_back(static_cast<uint8_t>(value >> (8 * i)));
    }
}

}  // namespace

OrientedRaster DecodeBmp(PictureBytes bytes) {
    const BmpLayout layout = ReadLayout(bytes);
    OrientedRaster result;
    Raster& raster = result.raster;
    raster.width = layout.width;
    raster.height = layout.height;
    raster.rgba.resize(raster.stride() * raster.height);
    const uint8_t* palette = bytes.data + layout.paletteOffset;
    for (uint32_t y = 0; y < layout.height; ++y) {
        const uint32_t stored = layout.topDown ? y : layout.height - 1 - y;
        const uint8_t* in = bytes.data + layout.pixelOffset + stored * layout.stride;
        if (layout.bits <= 8) {
            ReadIndexedRow(in, layout, palette, raster.row(y));
        } else {
            ReadDirectRow(in, layout, raster.row(y));
        }
    }
    return result;
}

PictureDimensions MeasureBmp(PictureBytes bytes) {
    const BmpLayout layout = ReadLayout(bytes);
    return {static_cast<double>(layout.width), static_cast<double>(layout.height)};
}

// 24 bits with the 40-byte header, as GDI+ writes; 32 bits with bit fields and a V4 header when
// there is alpha, the one way readers agree to keep it. Bottom-up, as most readers expect.
std::vector<uint8_t> EncodeBmp(const Raster& raster) {
    const bool alpha = raster.hasAlpha;
    const uint32_t bits = alpha ? 32 : 24;
    const uint32_t headerSize = alpha ? kV4HeaderSize : kInfoHeaderSize;
    const uint64_t stride = (uint64_t{bits} * raster.width + 31) / 32 * 4;
    const uint64_t imageSize = stride * raster.height;
    const uint64_t fileSize = kFileHeaderSize + headerSize + imageSize;
    if (fileSize > std::numeric_limits<uint32_t>::max() ||
        raster.width > static_cast<uint32_t>(std::numeric_limits<int32_t>::max())) {
        ThrowPictureNotSaved();
    }
    std::vector<uint8_t> out;
    out.reserve(static_cast<size_t>(fileSize));
    out.push_back('B');
    out.push_back('M');
    PutLe(out, static_cast<uint32_t>(fileSize), 4);
    PutLe(out, 0, 4);
    PutLe(out, kFileHeaderSize + headerSize, 4);
    PutLe(out, headerSize, 4);
    PutLe(out, raster.width, 4);
    PutLe(out, raster.height, 4);
    PutLe(out, 1, 2);  // planes
    PutLe(out, bits, 2);
    PutLe(out, alpha ? kBitFields : kRgb, 4);
    PutLe(out, static_cast<uint32_t>(imageSize), 4);
    PutLe(out, kPixelsPerMetreAt96Dpi, 4);
    PutLe(out, kPixelsPerMetreAt96Dpi, 4);
    PutLe(out, 0, 4);  // colours used
    PutLe(out, 0, 4);  // colours important
    if (alpha) {
        PutLe(out, 0x00FF0000, 4);
        PutLe(out, 0x0000FF00, 4);
        PutLe(out, 0x000000FF, 4);
        PutLe(out, 0xFF000000, 4);
        PutLe(out, kSrgbColourSpace, 4);
        out.resize(out.size() + kV4HeaderSize - 60, 0);  // end points and gamma: unused for sRGB
    }
    const size_t padding = static_cast<size_t>(stride - size_t{raster.width} * (bits / 8));
    for (uint32_t y = raster.height; y-- > 0;) {
        const uint8_t* row = raster.row(y);
        for (uint32_t x = 0; x < raster.width; ++x) {
            const uint8_t* pixel = row + size_t{x} * 4;
            out.push_back(pixel[2]);
            out.push_back(pixel[1]);
            out.push_back(pixel[0]);
            if (alpha) {
                out.push_back(pixel[3]);
            }
        }
        out.resize(out.size() + padding, 0);
    }
    return out;
}

}  // namespace slib
