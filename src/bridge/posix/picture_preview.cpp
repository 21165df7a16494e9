#include "bridge/picture_preview.h"

#include "foundation/exception.h"
#include "picture/posix/picture_codecs.h"

namespace bridge {

// A picture the codecs cannot read is stored without a preview, as on Windows.
std::vector<uint8_t> PngPreview(const slib::Data& picture) {
    try {
        return slib::EncodePictureBytes(slib::DecodePictureBytes(picture.bytes()).raster,
                                        slib::PictureFormat::kPng);
    } catch (const slib::Exception&) {
        return {};
    }
}

}  // namespace bridge
