// Chooses the codec by the bytes' signature, never by a file name: a container or a renamed file
// says nothing reliable about its format.
#include "picture/posix/picture_codecs.h"

#include <cstring>

#include "foundation/exception.h"
#include "picture/picture_signature.h"
#include "picture/posix/codec_errors.h"
#include "picture/posix/format_codecs.h"

namespace slib {
namespace {

struct FormatCodec {
    PictureFormat format;
    const char* signature;
    size_t signatureLength;
    OrientedRaster (*decode)(PictureBytes);
    PictureDimensions (*measure)(PictureBytes);
    std::vector<uint8_t> (*encode)(const Raster&);
};

const FormatCodec kCodecs[] = {
    {PictureFormat::kJpeg, "\xFF\xD8\xFF", 3, &DecodeJpeg, &MeasureJpeg, &EncodeJpeg},
    {PictureFormat::kPng, "\x89PNG\r\n\x1A\n", 8, &DecodePng, &MeasurePng, &EncodePng},
    {PictureFormat::kGif, "GIF8", 4, &DecodeGif, &MeasureGif, &EncodeGif},
    {PictureFormat::kBmp, "BM", 2, &DecodeBmp, &MeasureBmp, &EncodeBmp},
    {PictureFormat::kTiff, "II*\0", 4, &DecodeTiff, &MeasureTiff, &EncodeTiff},
    {PictureFormat::kTiff, "MM\0*", 4, &DecodeTiff, &MeasureTiff, &EncodeTiff},
};

struct UnavailableFormat {
    size_t offset;
    const char* signature;
    size_t signatureLength;
    const char* name;
};

// Signatures HasPictureSignature accepts that no codec here reads.
const UnavailableFormat kUnavailable[] = {
    {0, "\0\0\1\0", 4, "ICO"},
    {40, " EMF", 4, "EMF"},
    {0, "\xD7\xCD\xC6\x9A", 4, "WMF"},
};

bool Starts(const std::vector<uint8_t>& bytes, size_t offset, const char* signature,
            size_t length) {
    return bytes.size() >= offset + length &&
           std::memcmp(bytes.data() + offset, signature, length) == 0;
}

const FormatCodec& CodecFor(const std::vector<uint8_t>& bytes) {
    for (const FormatCodec& codec : kCodecs) {
        if (Starts(bytes, 0, codec.signature, codec.signatureLength)) {
            return codec;
        }
    }
    for (const UnavailableFormat& format : kUnavailable) {
        if (Starts(bytes, format.offset, format.signature, format.signatureLength)) {
            ThrowFormatUnavailable(format.name);
        }
    }
    if (HasPictureSignature(bytes.data(), bytes.size())) {
        ThrowPictureDamaged();  // a signature added there without a codec here
    }
    ThrowNotAPicture();
}

const FormatCodec& CodecFor(PictureFormat format) {
    for (const FormatCodec& codec : kCodecs) {
        if (codec.format == format) {
            return codec;
        }
    }
    ThrowPictureNotSaved();
}

bool HoldsPixels(const Raster& raster) {
    return raster.width != 0 && raster.height != 0 &&
           raster.rgba.size() == size_t{raster.width} * raster.height * 4;
}

}  // namespace

DecodedPicture DecodePictureBytes(const std::vector<uint8_t>& bytes) {
    const FormatCodec& codec = CodecFor(bytes);
    OrientedRaster decoded = codec.decode({bytes.data(), bytes.size()});
    decoded.raster.hasAlpha = AnyTranslucentPixel(decoded.raster);
    return {std::move(decoded.raster), codec.format, decoded.orientation};
}

PictureDimensions MeasurePictureHeader(const std::vector<uint8_t>& bytes) {
    return CodecFor(bytes).measure({bytes.data(), bytes.size()});
}

std::vector<uint8_t> EncodePictureBytes(const Raster& raster, PictureFormat format) {
    if (!HoldsPixels(raster)) {
        ThrowPictureNotSaved();
    }
    const FormatCodec& codec = CodecFor(format);
    std::vector<uint8_t> bytes = codec.encode(raster);
    // An encoder's success proves nothing until its bytes read back at the same size.
    try {
        const OrientedRaster check = codec.decode({bytes.data(), bytes.size()});
        if (check.raster.width != raster.width || check.raster.height != raster.height) {
            ThrowPictureNotSaved();
        }
    } catch (const Exception&) {
        ThrowPictureNotSaved();
    }
    return bytes;
}

}  // namespace slib
