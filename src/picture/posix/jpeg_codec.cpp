// JPEG through libjpeg-turbo. Its errors leave through longjmp, which skips C++ destructors, so
// the frames that call it hold nothing that needs one; every owner lives in the caller.
#include <csetjmp>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

// jpeglib.h needs size_t and FILE declared first.
#include <jerror.h>
#include <jpeglib.h>

#include "foundation/unique_resource.h"
#include "picture/jpeg_exif.h"
#include "picture/posix/codec_errors.h"
#include "picture/posix/decode_size_limit.h"
#include "picture/posix/format_codecs.h"

namespace slib {
namespace {

constexpr int kQuality = 75;
// Corrupt progressive files can hold thousands of scans, each a pass over the whole picture.
constexpr int kMaxScans = 1000;

struct JpegFailure {
    jpeg_error_mgr manager;  // first, so libjpeg's pointer to it is a pointer to the whole
    jmp_buf jump;
};

[[noreturn]] void OnJpegError(j_common_ptr info) {
    longjmp(reinterpret_cast<JpegFailure*>(info->err)->jump, 1);
}

// A library that fills a cut-short or corrupt picture with grey would have the converter
// overwrite its target with a wrong picture; these warnings fail the decode instead.
bool MeansDamage(int messageCode) {
    switch (messageCode) {
        case JWRN_HIT_MARKER:
        case JWRN_HUFF_BAD_CODE:
        case JWRN_JPEG_EOF:
        case JWRN_MUST_RESYNC:
            return true;
        default:
            return false;
    }
}

void OnJpegMessage(j_common_ptr info, int level) {
    if (level < 0 && MeansDamage(info->err->msg_code)) {
        OnJpegError(info);
    }
}

void IgnoreJpegOutput(j_common_ptr) {}

void LimitScans(j_common_ptr info) {
    if (info->is_decompressor &&
        reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > kMaxScans) {
        OnJpegError(info);
    }
}

void Quiet(JpegFailure& failure) {
    jpeg_std_error(&failure.manager);
    failure.manager.error_exit = &OnJpegError;
    failure.manager.emit_message = &OnJpegMessage;
    failure.manager.output_message = &IgnoreJpegOutput;
}

void DestroyDecompress(j_decompress_ptr info) {
    jpeg_destroy_decompress(info);
}
void DestroyCompress(j_compress_ptr info) {
    jpeg_destroy_compress(info);
}
void FreeJpegBuffer(unsigned char* buffer) {
    std::free(buffer);
}

using DecompressOwner = UniqueResource<j_decompress_ptr, &DestroyDecompress>;
using CompressOwner = UniqueResource<j_compress_ptr, &DestroyCompress>;
using JpegBuffer = UniqueResource<unsigned char*, &FreeJpegBuffer>;

struct JpegReading {
    jpeg_decompress_struct info;
    JpegFailure failure;
    jpeg_progress_mgr progress;
    Raster* raster;  // null: the header alone
};

// Adobe's CMYK is stored inverted (0 is full ink); the others store ink as is.
void CmykRowToRgba(uint8_t* row, uint32_t width, bool inverted) {
    for (uint32_t x = 0; x < width; ++x) {
        uint8_t* pixel = row + size_t{x} * 4;
        const unsigned k = inverted ? pixel[3] : 255u - pixel[3];
        for (int c = 0; c < 3; ++c) {
            const unsigned ink = inverted ? pixel[c] : 255u - pixel[c];
            pixel[c] = static_cast<uint8_t>((ink * k + 127) / 255);
        }
        pixel[3] = 0xFF;
    }
}

// False when libjpeg failed. Holds no object with a destructor (see the top of the file); the
// library's state is handed to `owner` as soon as it exists.
bool ReadJpeg(JpegReading& job, PictureBytes bytes, DecompressOwner& owner) {
    j_decompress_ptr info = &job.info;
    Quiet(job.failure);
    info->err = &job.failure.manager;
    if (setjmp(job.failure.jump) != 0) {
        return false;
    }
    jpeg_create_decompress(info);
    owner.reset(info);
    job.progress.progress_monitor = &LimitScans;
    info->progress = &job.progress;
    jpeg_mem_src(info, bytes.data, static_cast<unsigned long>(bytes.size));
    jpeg_read_header(info, TRUE);
    RequireDecodableSize(info->image_width, info->image_height);
    if (job.raster == nullptr) {
        return true;
    }
    const bool cmyk = info->jpeg_color_space == JCS_CMYK || info->jpeg_color_space == JCS_YCCK;
    info->out_color_space = cmyk ? JCS_CMYK : JCS_EXT_RGBA;
    jpeg_start_decompress(info);
    if (info->output_components != 4) {
        return false;
    }
    Raster& raster = *job.raster;
    raster.width = info->output_width;
    raster.height = info->output_height;
    raster.rgba.resize(raster.stride() * raster.height);
    while (info->output_scanline < info->output_height) {
        JSAMPROW row = raster.row(info->output_scanline);
        if (jpeg_read_scanlines(info, &row, 1) != 1) {
            return false;
        }
        if (cmyk) {
            CmykRowToRgba(row, raster.width, info->saw_Adobe_marker);
        }
    }
    jpeg_finish_decompress(info);
    return true;
}

struct JpegWriting {
    jpeg_compress_struct info;
    JpegFailure failure;
    unsigned char* buffer;
    unsigned long size;
};

bool WriteJpeg(JpegWriting& job, const Raster& raster, CompressOwner& owner) {
    j_compress_ptr info = &job.info;
    Quiet(job.failure);
    info->err = &job.failure.manager;
    if (setjmp(job.failure.jump) != 0) {
        return false;
    }
    jpeg_create_compress(info);
    owner.reset(info);
    jpeg_mem_dest(info, &job.buffer, &job.size);
    info->image_width = raster.width;
    info->image_height = raster.height;
    // The fourth byte is skipped: the picture is written from its colour channels alone.
    info->input_components = 4;
    info->in_color_space = JCS_EXT_RGBX;
    jpeg_set_defaults(info);  // YCbCr at 4:2:0
    jpeg_set_quality(info, kQuality, TRUE);
    jpeg_start_compress(info, TRUE);
    while (info->next_scanline < info->image_height) {
        JSAMPROW row = const_cast<uint8_t*>(raster.row(info->next_scanline));
        jpeg_write_scanlines(info, &row, 1);
    }
    jpeg_finish_compress(info);
    return true;
}

}  // namespace

OrientedRaster DecodeJpeg(PictureBytes bytes) {
    OrientedRaster result;
    JpegReading job{};
    job.raster = &result.raster;
    DecompressOwner owner;
    if (!ReadJpeg(job, bytes, owner)) {
        ThrowPictureDamaged();
    }
    result.orientation = FindJpegExifOrientation(bytes.data, bytes.size);
    return result;
}

PictureDimensions MeasureJpeg(PictureBytes bytes) {
    JpegReading job{};
    DecompressOwner owner;
    if (!ReadJpeg(job, bytes, owner)) {
        ThrowPictureDamaged();
    }
    return {static_cast<double>(job.info.image_width), static_cast<double>(job.info.image_height)};
}

std::vector<uint8_t> EncodeJpeg(const Raster& raster) {
    JpegWriting job{};
    CompressOwner owner;
    const bool written = WriteJpeg(job, raster, owner);
    const JpegBuffer buffer(job.buffer);
    if (!written || job.size == 0) {
        ThrowPictureNotSaved();
    }
    return std::vector<uint8_t>(job.buffer, job.buffer + job.size);
}

}  // namespace slib
