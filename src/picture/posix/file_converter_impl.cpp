// The Linux picture engine: the codec libraries decode and encode, the portable scaler and
// turner work in between, in the order and with the answers of the Windows engine.
#include <new>
#include <optional>
#include <utility>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "picture/file_converter.h"
#include "picture/picture_file.h"
#include "picture/posix/picture_codecs.h"
#include "picture/raster_resize.h"
#include "picture/raster_turn.h"
#include "picture/upright_turn.h"

namespace slib {
namespace {

PictureFormat TargetFormat(uint32_t targetType, PictureFormat source) {
    switch (targetType) {
        case FileType::kPng:
            return PictureFormat::kPng;
        case FileType::kJpeg:
            return PictureFormat::kJpeg;
        default:
            return source;
    }
}

class PosixFileConverter : public FileConverter {
  public:
    // Reads the whole source before anything is written, so a failure leaves no target file and
    // the source may be the target.
    void convert(const String& source, uint32_t sourceType, const String& target,
                 uint32_t targetType) override {
        RequireConvertibleTypes(sourceType, targetType);
        const ConversionSettings options = settings();

        DecodedPicture picture = DecodePictureBytes(ReadPictureFile(source, kConvertSourceMissing));
        const PictureFormat format = TargetFormat(targetType, picture.format);

        UprightTurn turn = UprightTurnFor(0);
        SizeRequest request = options.size;
        if (options.exifRotate) {
            if (!picture.orientation && options.requireOrientation) {
                Throw(kItemNotFound, "Picture has no exif");
            }
            turn = UprightTurnFor(picture.orientation.value_or(0));
            if (turn.swapsSides) {
                // Scaling comes before turning, so the request is turned the other way.
                std::swap(request.width, request.height);
            }
        }
        const PixelSize size =
            ComputeTargetSize(picture.raster.width, picture.raster.height, request);
        RequireCreatableSize(size);

        Raster upright;
        try {
            Raster scaled = ResizeRaster(picture.raster, static_cast<uint32_t>(size.width),
                                         static_cast<uint32_t>(size.height));
            picture.raster = Raster();
            upright = TurnRaster(std::move(scaled), turn);
        } catch (const std::bad_alloc&) {
            Throw(kUnclassified, "Cannot create a picture of that size");
        }
        WritePictureFile(target, EncodePictureBytes(upright, format));
    }
};

}  // namespace

std::shared_ptr<FileConverter> MakeFileConverter() {
    return std::make_shared<PosixFileConverter>();
}

}  // namespace slib
