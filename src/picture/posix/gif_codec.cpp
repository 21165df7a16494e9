// GIF through giflib: the first frame, placed on the logical screen, with its transparent index.
#include <gif_lib.h>

#include <algorithm>
#include <cstring>

#include "foundation/unique_resource.h"
#include "picture/palette_quantizer.h"
#include "picture/posix/codec_errors.h"
#include "picture/posix/decode_size_limit.h"
#include "picture/posix/format_codecs.h"

namespace slib {
namespace {

constexpr uint32_t kMaxGifSide = 0xFFFF;
constexpr uint32_t kTransparentKey = 0;  // every pixel too transparent to show, as one ARGB value

void CloseGifReader(GifFileType* gif) {
    int error = 0;
    DGifCloseFile(gif, &error);
}
void CloseGifWriter(GifFileType* gif) {
    int error = 0;
    EGifCloseFile(gif, &error);
}

using GifReader = UniqueResource<GifFileType*, &CloseGifReader>;
using GifWriter = UniqueResource<GifFileType*, &CloseGifWriter>;
using GifColourMap = UniqueResource<ColorMapObject*, &GifFreeMapObject>;

struct MemoryReader {
    PictureBytes bytes;
    size_t offset;
};

int ReadFromMemory(GifFileType* gif, GifByteType* out, int length) {
    auto* reader = static_cast<MemoryReader*>(gif->UserData);
    const size_t count =
        std::min(static_cast<size_t>(std::max(length, 0)), reader->bytes.size - reader->offset);
    std::memcpy(out, reader->bytes.data + reader->offset, count);
    reader->offset += count;
    return static_cast<int>(count);
}

// giflib is C: nothing may be thrown through it.
int WriteToMemory(GifFileType* gif, const GifByteType* data, int length) {
    auto* bytes = static_cast<std::vector<uint8_t>*>(gif->UserData);
    try {
        bytes->insert(bytes->end(), data, data + length);
    } catch (...) {
        return 0;
    }
    return length;
}

GifReader OpenGif(MemoryReader& reader) {
    int error = 0;
    GifReader gif(DGifOpen(&reader, &ReadFromMemory, &error));
    if (!gif) {
        ThrowPictureDamaged();
    }
    RequireDecodableSize(static_cast<uint32_t>(gif.get()->SWidth),
                         static_cast<uint32_t>(gif.get()->SHeight));
    return gif;
}

// The transparent index of a graphic control extension, or the one found before; the rest of the
// extension is skipped.
int ReadExtension(GifFileType* gif, int transparent) {
    int code = 0;
    GifByteType* block = nullptr;
    if (DGifGetExtension(gif, &code, &block) == GIF_ERROR) {
        ThrowPictureDamaged();
    }
    if (code == GRAPHICS_EXT_FUNC_CODE && block != nullptr && block[0] >= 4) {
        GraphicsControlBlock control{};
        if (DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
            transparent = control.TransparentColor;
        }
    }
    while (block != nullptr) {
        if (DGifGetExtensionNext(gif, &block) == GIF_ERROR) {
            ThrowPictureDamaged();
        }
    }
    return transparent;
}

// The rows of an interlaced frame come in four passes: every 8th from 0, every 8th from 4, every
// 4th from 2, every 2nd from 1.
std::vector<uint32_t> FrameRowOrder(uint32_t height, bool interlaced) {
    std::vector<uint32_t> order;
    order.reserve(height);
    if (!interlaced) {
        for (uint32_t y = 0; y < height; ++y) {
            order.push_back(y);
        }
        return order;
    }
    const uint32_t starts[] = {0, 4, 2, 1};
    const uint32_t steps[] = {8, 8, 4, 2};
    for (int pass = 0; pass < 4; ++pass) {
        for (uint32_t y = starts[pass]; y < height; y += steps[pass]) {
            order.push_back(y);
        }
    }
    return order;
}

void PlaceFrame(GifFileType* gif, int transparent, Raster& raster) {
    if (DGifGetImageDesc(gif) == GIF_ERROR) {
        ThrowPictureDamaged();
    }
    const GifImageDesc& frame = gif->Image;
    const ColorMapObject* colours = frame.ColorMap != nullptr ? frame.ColorMap : gif->SColorMap;
    if (colours == nullptr || frame.Width <= 0 || frame.Height <= 0) {
        ThrowPictureDamaged();
    }
    std::vector<GifPixelType> line(static_cast<size_t>(frame.Width));
    for (const uint32_t y : FrameRowOrder(static_cast<uint32_t>(frame.Height), frame.Interlace)) {
        if (DGifGetLine(gif, line.data(), frame.Width) == GIF_ERROR) {
            ThrowPictureDamaged();
        }
        const int64_t screenY = int64_t{frame.Top} + y;
        if (screenY >= raster.height) {
            continue;
        }
        for (int x = 0; x < frame.Width; ++x) {
            const int64_t screenX = int64_t{frame.Left} + x;
            if (screenX >= raster.width || line[x] == transparent) {
                continue;
            }
            uint8_t* pixel = raster.row(static_cast<uint32_t>(screenY)) + screenX * 4;
            if (line[x] < colours->ColorCount) {
                const GifColorType& colour = colours->Colors[line[x]];
                pixel[0] = colour.Red;
                pixel[1] = colour.Green;
                pixel[2] = colour.Blue;
            }  // an index past the map is black, as browsers show it
            pixel[3] = 0xFF;
        }
    }
}

// ARGB pixels with every pixel under half opacity made the one transparent key: GIF has a single
// fully transparent index and no partial transparency.
std::vector<uint32_t> GifPixels(const Raster& raster) {
    std::vector<uint32_t> argb(size_t{raster.width} * raster.height);
    for (size_t i = 0; i < argb.size(); ++i) {
        const uint8_t* p = raster.rgba.data() + i * 4;
        argb[i] = p[3] < 0x80 ? kTransparentKey
                              : 0xFF000000u | (uint32_t{p[0]} << 16) | (uint32_t{p[1]} << 8) | p[2];
    }
    return argb;
}

// The palette index of the transparent key, added when the quantizer's colour cube lost it.
int KeepTransparentKey(const std::vector<uint32_t>& argb, IndexedPixels& indexed) {
    if (std::find(argb.begin(), argb.end(), kTransparentKey) == argb.end()) {
        return NO_TRANSPARENT_COLOR;
    }
    const auto found = std::find(indexed.palette.begin(), indexed.palette.end(), kTransparentKey);
    if (found != indexed.palette.end()) {
        return static_cast<int>(found - indexed.palette.begin());
    }
    if (indexed.palette.size() >= 256) {
        ThrowPictureNotSaved();
    }
    const auto key = static_cast<uint8_t>(indexed.palette.size());
    indexed.palette.push_back(kTransparentKey);
    for (size_t i = 0; i < argb.size(); ++i) {
        if (argb[i] == kTransparentKey) {
            indexed.indices[i] = key;
        }
    }
    return key;
}

GifColourMap MakeColourMap(const std::vector<uint32_t>& palette, int& bits) {
    bits = 1;
    while ((size_t{1} << bits) < palette.size()) {
        ++bits;
    }
    std::vector<GifColorType> colours(size_t{1} << bits, GifColorType{0, 0, 0});
    for (size_t i = 0; i < palette.size(); ++i) {
        colours[i] = {static_cast<GifByteType>(palette[i] >> 16),
                      static_cast<GifByteType>(palette[i] >> 8),
                      static_cast<GifByteType>(palette[i])};
    }
    GifColourMap map(GifMakeMapObject(static_cast<int>(colours.size()), colours.data()));
    if (!map) {
        ThrowPictureNotSaved();
    }
    return map;
}

}  // namespace

OrientedRaster DecodeGif(PictureBytes bytes) {
    MemoryReader reader{bytes, 0};
    GifReader gif = OpenGif(reader);
    OrientedRaster result;
    Raster& raster = result.raster;
    raster.width = static_cast<uint32_t>(gif.get()->SWidth);
    raster.height = static_cast<uint32_t>(gif.get()->SHeight);
    raster.rgba.assign(raster.stride() * raster.height, 0);  // uncovered screen is transparent
    int transparent = NO_TRANSPARENT_COLOR;
    for (;;) {
        GifRecordType record = UNDEFINED_RECORD_TYPE;
        if (DGifGetRecordType(gif.get(), &record) == GIF_ERROR) {
            ThrowPictureDamaged();
        }
        if (record == EXTENSION_RECORD_TYPE) {
            transparent = ReadExtension(gif.get(), transparent);
        } else if (record == IMAGE_DESC_RECORD_TYPE) {
            PlaceFrame(gif.get(), transparent, raster);
            return result;
        } else {
            ThrowPictureDamaged();  // the end, or a record that cannot be, before any frame
        }
    }
}

PictureDimensions MeasureGif(PictureBytes bytes) {
    MemoryReader reader{bytes, 0};
    const GifReader gif = OpenGif(reader);
    return {static_cast<double>(gif.get()->SWidth), static_cast<double>(gif.get()->SHeight)};
}

std::vector<uint8_t> EncodeGif(const Raster& raster) {
    if (raster.width > kMaxGifSide || raster.height > kMaxGifSide) {
        ThrowPictureNotSaved();
    }
    const std::vector<uint32_t> argb = GifPixels(raster);
    IndexedPixels indexed = QuantizeToPalette(reinterpret_cast<const uint8_t*>(argb.data()),
                                              raster.width, raster.height, raster.stride());
    const int transparent = KeepTransparentKey(argb, indexed);
    int bits = 0;
    const GifColourMap colours = MakeColourMap(indexed.palette, bits);

    std::vector<uint8_t> bytes;
    int error = 0;
    GifWriter gif(EGifOpen(&bytes, &WriteToMemory, &error));
    if (!gif) {
        ThrowPictureNotSaved();
    }
    const int width = static_cast<int>(raster.width);
    const int height = static_cast<int>(raster.height);
    // The version goes into the header the screen descriptor writes; transparency needs 89a.
    EGifSetGifVersion(gif.get(), transparent != NO_TRANSPARENT_COLOR);
    bool written = EGifPutScreenDesc(gif.get(), width, height, bits, 0, colours.get()) == GIF_OK;
    if (written && transparent != NO_TRANSPARENT_COLOR) {
        const GraphicsControlBlock control{DISPOSAL_UNSPECIFIED, false, 0, transparent};
        GifByteType extension[4];
        const size_t length = EGifGCBToExtension(&control, extension);
        written = EGifPutExtension(gif.get(), GRAPHICS_EXT_FUNC_CODE, static_cast<int>(length),
                                   extension) == GIF_OK;
    }
    written = written && EGifPutImageDesc(gif.get(), 0, 0, width, height, false, nullptr) == GIF_OK;
    for (uint32_t y = 0; written && y < raster.height; ++y) {
        written = EGifPutLine(gif.get(), indexed.indices.data() + size_t{y} * raster.width,
                              width) == GIF_OK;
    }
    // Closing writes the trailer, so its answer counts.
    if (!written || EGifCloseFile(gif.release(), &error) != GIF_OK) {
        ThrowPictureNotSaved();
    }
    return bytes;
}

}  // namespace slib
