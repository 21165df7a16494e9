// No picture engine on Linux yet (the later port brings one): every picture operation fails at
// once with one defined answer, and no file is read or written.
#include "foundation/unavailable_here.h"
#include "picture/file_converter.h"
#include "picture/picture_pixels.h"

namespace slib {

namespace {

constexpr char kPicturesUnavailable[] = "Pictures are not available on Linux yet";

class UnavailableConverter : public FileConverter {
  public:
    void convert(const String&, uint32_t, const String&, uint32_t) override {
        ThrowUnavailableHere(kPicturesUnavailable);
    }
};

}  // namespace

std::shared_ptr<FileConverter> MakeFileConverter() {
    return std::make_shared<UnavailableConverter>();
}

PictureDimensions MeasurePictureBytes(const std::vector<uint8_t>&) {
    ThrowUnavailableHere(kPicturesUnavailable);
}

PictureDimensions MeasurePictureFile(const String&, const char*) {
    ThrowUnavailableHere(kPicturesUnavailable);
}

}  // namespace slib
