// PNG through libpng. Its errors leave through longjmp, which skips C++ destructors, so the frames
// that call it hold nothing that needs one; every owner lives in the caller.
#include <png.h>

#include <cstring>

#include "foundation/unique_resource.h"
#include "picture/posix/codec_errors.h"
#include "picture/posix/decode_size_limit.h"
#include "picture/posix/format_codecs.h"

namespace slib {
namespace {

// The side chunks libpng knows, each name with its terminating zero.
constexpr png_byte kSkippedChunks[] =
    "bKGD\0cHRM\0eXIf\0gAMA\0hIST\0iCCP\0iTXt\0oFFs\0pCAL\0pHYs\0sBIT\0sCAL\0sPLT\0sRGB\0"
    "tEXt\0tIME\0zTXt";

// libpng's read or write state with its info block: one resource, freed together.
struct PngState {
    png_structp png = nullptr;
    png_infop info = nullptr;
    bool writing = false;

    bool operator==(const PngState& other) const { return png == other.png; }
    bool operator!=(const PngState& other) const { return png != other.png; }
};

void DestroyPngState(PngState state) {
    if (state.writing) {
        png_destroy_write_struct(&state.png, &state.info);
    } else {
        png_destroy_read_struct(&state.png, &state.info, nullptr);
    }
}

using PngOwner = UniqueResource<PngState, &DestroyPngState>;

struct MemoryReader {
    PictureBytes bytes;
    size_t offset;
};

void ReadFromMemory(png_structp png, png_bytep out, png_size_t length) {
    auto* reader = static_cast<MemoryReader*>(png_get_io_ptr(png));
    if (length > reader->bytes.size - reader->offset) {
        png_error(png, "cut short");
    }
    std::memcpy(out, reader->bytes.data + reader->offset, length);
    reader->offset += length;
}

// The write callback may not throw through libpng: it collects into a plain growing buffer and
// fails through png_error when memory runs out.
struct MemoryWriter {
    std::vector<uint8_t>* bytes;
};

void WriteToMemory(png_structp png, png_bytep data, png_size_t length) {
    auto* writer = static_cast<MemoryWriter*>(png_get_io_ptr(png));
    bool stored = true;
    try {
        writer->bytes->insert(writer->bytes->end(), data, data + length);
    } catch (...) {
        stored = false;  // no longjmp out of a handler: it would leak the exception
    }
    if (!stored) {
        png_error(png, "out of memory");
    }
}

void FlushNothing(png_structp) {}

[[noreturn]] void OnPngError(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void IgnorePngWarning(png_structp, png_const_charp) {}

PngOwner NewReader() {
    PngState state;
    state.png =
        png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, &OnPngError, &IgnorePngWarning);
    if (state.png == nullptr) {
        ThrowPictureDamaged();
    }
    state.info = png_create_info_struct(state.png);
    PngOwner owner(state);
    if (state.info == nullptr) {
        ThrowPictureDamaged();
    }
    // Our own limit decides, with its own message; libpng's default would answer "damaged".
    png_set_user_limits(state.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    // libpng allocates what a text or profile chunk declares (2 GB for a 100-byte file), and
    // none of them changes the pixels: every side chunk but transparency is skipped unread.
    png_set_keep_unknown_chunks(state.png, PNG_HANDLE_CHUNK_NEVER, nullptr, 0);
    png_set_keep_unknown_chunks(state.png, PNG_HANDLE_CHUNK_NEVER, kSkippedChunks,
                                static_cast<int>(sizeof(kSkippedChunks) / 5));
    return owner;
}

// Every colour type and depth to 8-bit RGBA, straight alpha, no gamma change.
void AskForRgba(png_structp png, png_infop info) {
    const png_byte colourType = png_get_color_type(png, info);
    if (png_get_bit_depth(png, info) == 16) {
        png_set_scale_16(png);
    }
    if (colourType == PNG_COLOR_TYPE_PALETTE) {
        png_set_palette_to_rgb(png);
    }
    if (colourType == PNG_COLOR_TYPE_GRAY && png_get_bit_depth(png, info) < 8) {
        png_set_expand_gray_1_2_4_to_8(png);
    }
    if (png_get_valid(png, info, PNG_INFO_tRNS) != 0) {
        png_set_tRNS_to_alpha(png);
    }
    if (colourType == PNG_COLOR_TYPE_GRAY || colourType == PNG_COLOR_TYPE_GRAY_ALPHA) {
        png_set_gray_to_rgb(png);
    }
    png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
}

// False when libpng failed. Holds no object with a destructor (see the top of the file).
bool ReadPng(png_structp png, png_infop info, MemoryReader& reader, Raster* raster,
             PictureDimensions& size) {
    if (setjmp(png_jmpbuf(png)) != 0) {
        return false;
    }
    png_set_read_fn(png, &reader, &ReadFromMemory);
    png_read_info(png, info);
    const png_uint_32 width = png_get_image_width(png, info);
    const png_uint_32 height = png_get_image_height(png, info);
    RequireDecodableSize(width, height);
    size = {static_cast<double>(width), static_cast<double>(height)};
    if (raster == nullptr) {
        return true;
    }
    AskForRgba(png, info);
    const int passes = png_set_interlace_handling(png);
    png_read_update_info(png, info);
    if (png_get_rowbytes(png, info) != size_t{width} * 4) {
        return false;
    }
    raster->width = width;
    raster->height = height;
    raster->rgba.resize(raster->stride() * height);
    for (int pass = 0; pass < passes; ++pass) {
        for (png_uint_32 y = 0; y < height; ++y) {
            png_read_row(png, raster->row(y), nullptr);
        }
    }
    return true;
}

bool WritePng(png_structp png, png_infop info, MemoryWriter& writer, const Raster& raster) {
    if (setjmp(png_jmpbuf(png)) != 0) {
        return false;
    }
    png_set_write_fn(png, &writer, &WriteToMemory, &FlushNothing);
    png_set_IHDR(png, info, raster.width, raster.height, 8,
                 raster.hasAlpha ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    if (!raster.hasAlpha) {
        png_set_filler(png, 0, PNG_FILLER_AFTER);  // skips the fourth byte of each pixel
    }
    for (uint32_t y = 0; y < raster.height; ++y) {
        png_write_row(png, raster.row(y));
    }
    png_write_end(png, info);
    return true;
}

uint32_t Big32(const uint8_t* p) {
    return (uint32_t{p[0]} << 24) | (uint32_t{p[1]} << 16) | (uint32_t{p[2]} << 8) | p[3];
}

// libpng reads every chunk before the pixels ahead of telling the size, so a header declaring a
// huge picture is refused here, from the header chunk that must come first.
void RequireDeclaredSize(PictureBytes bytes) {
    constexpr size_t kHeaderChunkData = 16;
    if (bytes.size >= kHeaderChunkData + 8 &&
        std::memcmp(bytes.data + kHeaderChunkData - 4, "IHDR", 4) == 0) {
        RequireDecodableSize(Big32(bytes.data + kHeaderChunkData),
                             Big32(bytes.data + kHeaderChunkData + 4));
    }
}

OrientedRaster ReadPngBytes(PictureBytes bytes, bool headerOnly, PictureDimensions& size) {
    RequireDeclaredSize(bytes);
    OrientedRaster result;
    PngOwner owner = NewReader();
    MemoryReader reader{bytes, 0};
    if (!ReadPng(owner.get().png, owner.get().info, reader, headerOnly ? nullptr : &result.raster,
                 size)) {
        ThrowPictureDamaged();
    }
    return result;
}

}  // namespace

OrientedRaster DecodePng(PictureBytes bytes) {
    PictureDimensions size{};
    return ReadPngBytes(bytes, false, size);
}

PictureDimensions MeasurePng(PictureBytes bytes) {
    PictureDimensions size{};
    ReadPngBytes(bytes, true, size);
    return size;
}

std::vector<uint8_t> EncodePng(const Raster& raster) {
    PngState state;
    state.writing = true;
    state.png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, &OnPngError, &IgnorePngWarning);
    if (state.png == nullptr) {
        ThrowPictureNotSaved();
    }
    state.info = png_create_info_struct(state.png);
    PngOwner owner(state);
    if (state.info == nullptr) {
        ThrowPictureNotSaved();
    }
    std::vector<uint8_t> bytes;
    MemoryWriter writer{&bytes};
    if (!WritePng(state.png, state.info, writer, raster)) {
        ThrowPictureNotSaved();
    }
    return bytes;
}

}  // namespace slib
