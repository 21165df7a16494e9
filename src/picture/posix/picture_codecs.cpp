// Chooses the codec by the bytes' signature, never by a file name: a container or a renamed file
// says nothing reliable about its format.
#include "picture/posix/picture_codecs.h"

#include <optional>

#include "foundation/exception.h"
#include "picture/picture_signature.h"
#include "picture/posix/codec_errors.h"
#include "picture/posix/format_codecs.h"

namespace slib {
namespace {

struct FormatCodec {
    PictureFormat format;
    OrientedRaster (*decode)(PictureBytes);
    PictureDimensions (*measure)(PictureBytes);
    std::vector<uint8_t> (*encode)(const Raster&);
};

const FormatCodec kCodecs[] = {
    {PictureFormat::kJpeg, &DecodeJpeg, &MeasureJpeg, &EncodeJpeg},
    {PictureFormat::kPng, &DecodePng, &MeasurePng, &EncodePng},
    {PictureFormat::kGif, &DecodeGif, &MeasureGif, &EncodeGif},
    {PictureFormat::kBmp, &DecodeBmp, &MeasureBmp, &EncodeBmp},
    {PictureFormat::kTiff, &DecodeTiff, &MeasureTiff, &EncodeTiff},
};

const FormatCodec& CodecFor(PictureFormat format);

const FormatCodec& CodecFor(const std::vector<uint8_t>& bytes) {
    const std::optional<SignedFormat> signature = FindPictureSignature(bytes.data(), bytes.size());
    if (!signature) {
        ThrowNotAPicture();
    }
    switch (*signature) {
        case SignedFormat::kJpeg:
            return CodecFor(PictureFormat::kJpeg);
        case SignedFormat::kPng:
            return CodecFor(PictureFormat::kPng);
        case SignedFormat::kGif:
            return CodecFor(PictureFormat::kGif);
        case SignedFormat::kBmp:
            return CodecFor(PictureFormat::kBmp);
        case SignedFormat::kTiff:
            return CodecFor(PictureFormat::kTiff);
        case SignedFormat::kIco:
            ThrowFormatUnavailable("ICO");
        case SignedFormat::kEmf:
            ThrowFormatUnavailable("EMF");
        case SignedFormat::kWmf:
            ThrowFormatUnavailable("WMF");
    }
    ThrowPictureDamaged();  // not reached: the switch names every signed format
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
