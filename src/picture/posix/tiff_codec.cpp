// TIFF through libtiff, from and to memory: the first page through libtiff's RGBA reader (every
// photometric, depth and compression it knows), written as 8-bit RGB or RGBA with LZW, as GDI+
// writes by default.
#include <tiffio.h>

#include <algorithm>
#include <cstring>

#include "picture/posix/codec_errors.h"
#include "picture/posix/decode_size_limit.h"
#include "picture/posix/format_codecs.h"
#include "picture/posix/tiff_memory_stream.h"

namespace slib {
namespace {

constexpr uint64_t kMinWorkingMemory = uint64_t{64} << 20;
constexpr uint64_t kMaxWorkingMemory = uint64_t{1} << 30;
constexpr float kDotsPerInch = 96;

// libtiff's own buffers (strips, tiles) grow with the picture; they are bounded with it.
uint64_t WorkingMemoryLimit() {
    return std::clamp(DecodedPixelCap() * 8, kMinWorkingMemory, kMaxWorkingMemory);
}

struct OpenedTiff {
    TiffOwner tiff;
    uint32_t width = 0;
    uint32_t height = 0;
};

OpenedTiff OpenForReading(TiffMemoryStream& stream, PictureBytes bytes) {
    OpenedTiff opened;
    opened.tiff = OpenTiffStream(stream, bytes, "r", WorkingMemoryLimit());
    if (!opened.tiff || TIFFGetField(opened.tiff.get(), TIFFTAG_IMAGEWIDTH, &opened.width) != 1 ||
        TIFFGetField(opened.tiff.get(), TIFFTAG_IMAGELENGTH, &opened.height) != 1) {
        ThrowPictureDamaged();
    }
    RequireDecodableSize(opened.width, opened.height);
    return opened;
}

// libtiff's RGBA reader premultiplies; the raster keeps straight alpha.
void PackedToStraightRgba(Raster& raster) {
    for (size_t i = 0; i < raster.rgba.size(); i += 4) {
        uint32_t packed;
        std::memcpy(&packed, raster.rgba.data() + i, sizeof(packed));
        const uint32_t alpha = TIFFGetA(packed);
        uint8_t* pixel = raster.rgba.data() + i;
        const uint32_t channels[] = {TIFFGetR(packed), TIFFGetG(packed), TIFFGetB(packed)};
        for (int c = 0; c < 3; ++c) {
            pixel[c] = static_cast<uint8_t>(
                alpha == 0 ? 0 : std::min<uint32_t>(255, (channels[c] * 255 + alpha / 2) / alpha));
        }
        pixel[3] = static_cast<uint8_t>(alpha);
    }
}

bool SetWriteFields(TIFF* tiff, const Raster& raster) {
    const uint16_t samples = raster.hasAlpha ? 4 : 3;
    bool set = TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, raster.width) == 1 &&
               TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, raster.height) == 1 &&
               TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8) == 1 &&
               TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, samples) == 1 &&
               TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB) == 1 &&
               TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == 1 &&
               TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW) == 1 &&
               TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT) == 1 &&
               TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH) == 1 &&
               TIFFSetField(tiff, TIFFTAG_XRESOLUTION, kDotsPerInch) == 1 &&
               TIFFSetField(tiff, TIFFTAG_YRESOLUTION, kDotsPerInch) == 1;
    if (set && raster.hasAlpha) {
        const uint16_t extra[] = {EXTRASAMPLE_UNASSALPHA};
        set = TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, extra) == 1;
    }
    return set && TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0)) == 1;
}

}  // namespace

OrientedRaster DecodeTiff(PictureBytes bytes) {
    TiffMemoryStream stream;
    const OpenedTiff opened = OpenForReading(stream, bytes);
    TIFF* tiff = opened.tiff.get();
    OrientedRaster result;
    uint16_t orientation = 0;
    if (TIFFGetField(tiff, TIFFTAG_ORIENTATION, &orientation) == 1) {
        result.orientation = orientation;
    }
    char reason[1024] = {};
    if (TIFFRGBAImageOK(tiff, reason) != 1) {
        ThrowPictureDamaged();
    }
    Raster& raster = result.raster;
    raster.width = opened.width;
    raster.height = opened.height;
    raster.rgba.resize(raster.stride() * raster.height);
    // Asking for the picture in its own orientation keeps its rows as stored; turning it upright
    // is the converter's job, as for JPEG.
    const int stored = orientation >= ORIENTATION_TOPLEFT && orientation <= ORIENTATION_LEFTBOT
                           ? orientation
                           : ORIENTATION_TOPLEFT;
    if (TIFFReadRGBAImageOriented(tiff, raster.width, raster.height,
                                  reinterpret_cast<uint32_t*>(raster.rgba.data()), stored,
                                  1) != 1 ||
        stream.failed) {
        ThrowPictureDamaged();
    }
    PackedToStraightRgba(raster);
    return result;
}

PictureDimensions MeasureTiff(PictureBytes bytes) {
    TiffMemoryStream stream;
    const OpenedTiff opened = OpenForReading(stream, bytes);
    return {static_cast<double>(opened.width), static_cast<double>(opened.height)};
}

std::vector<uint8_t> EncodeTiff(const Raster& raster) {
    std::vector<uint8_t> bytes;
    TiffMemoryStream stream;
    stream.sink = &bytes;
    TiffOwner tiff = OpenTiffStream(stream, {nullptr, 0}, "w", kMaxWorkingMemory);
    if (!tiff || !SetWriteFields(tiff.get(), raster)) {
        ThrowPictureNotSaved();
    }
    std::vector<uint8_t> rgb(size_t{raster.width} * 3);
    for (uint32_t y = 0; y < raster.height; ++y) {
        const uint8_t* row = raster.row(y);
        if (!raster.hasAlpha) {
            for (uint32_t x = 0; x < raster.width; ++x) {
                std::memcpy(rgb.data() + size_t{x} * 3, row + size_t{x} * 4, 3);
            }
            row = rgb.data();
        }
        if (TIFFWriteScanline(tiff.get(), const_cast<uint8_t*>(row), y, 0) != 1) {
            ThrowPictureNotSaved();
        }
    }
    // Flushing writes the last strip and the directory; closing could not report a failure.
    if (TIFFFlush(tiff.get()) != 1 || stream.failed) {
        ThrowPictureNotSaved();
    }
    tiff.reset();
    return bytes;
}

}  // namespace slib
