// fuzz-sources: src/picture/jpeg_exif.cpp src/picture/palette_quantizer.cpp
// fuzz-sources: src/picture/picture_signature.cpp src/picture/posix/*_codec*.cpp
// fuzz-sources: src/picture/posix/codec_errors.cpp src/picture/posix/decode_size_limit.cpp
// fuzz-sources: src/picture/posix/raster_alpha.cpp src/picture/posix/tiff_memory_stream.cpp
// fuzz-sources: src/foundation/exception.cpp src/foundation/error.cpp src/foundation/object.cpp
// fuzz-sources: src/foundation/utf16_string.cpp src/foundation/utf_conversion.cpp
// fuzz-libs: -ltiff -ljpeg -lpng16 -lgif -lm
// Every Linux picture decoder through the signature dispatch, with arbitrary bytes: each answer is
// a picture or one of the defined errors. A small decoded picture is encoded again in a format
// the input chooses and must read back at its size. Seeds: build/native/fuzz-seeds/picture_decode
// (written by the codec tests).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "foundation/exception.h"
#include "picture/posix/decode_size_limit.h"
#include "picture/posix/picture_codecs.h"

namespace {

// Keeps each input fast; the product's limit stays as it is.
constexpr uint64_t kFuzzPixelCap = uint64_t{1} << 22;
constexpr size_t kMaxReencodedPixels = 1 << 14;
const slib::PictureFormat kFormats[] = {slib::PictureFormat::kJpeg, slib::PictureFormat::kPng,
                                        slib::PictureFormat::kGif, slib::PictureFormat::kBmp,
                                        slib::PictureFormat::kTiff};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    slib::SetDecodedPixelCap(kFuzzPixelCap);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::vector<uint8_t> bytes(data, data + size);
    try {
        slib::MeasurePictureHeader(bytes);
    } catch (const slib::Exception&) {
    }
    slib::DecodedPicture picture;
    try {
        picture = slib::DecodePictureBytes(bytes);
    } catch (const slib::Exception&) {
        return 0;
    }
    const slib::Raster& raster = picture.raster;
    if (raster.rgba.size() != size_t{raster.width} * raster.height * 4) {
        std::abort();
    }
    if (size_t{raster.width} * raster.height <= kMaxReencodedPixels) {
        const slib::PictureFormat format = kFormats[data[size - 1] % 5];
        const std::vector<uint8_t> encoded = slib::EncodePictureBytes(raster, format);
        const slib::DecodedPicture again = slib::DecodePictureBytes(encoded);
        if (again.raster.width != raster.width || again.raster.height != raster.height ||
            again.format != format) {
            std::abort();
        }
    }
    return 0;
}
