#include "picture/windows/file_converter_impl.h"

#include <utility>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "picture/picture_file.h"
#include "picture/upright_turn.h"
#include "picture/windows/gdiplus_session.h"
#include "picture/windows/picture_codec.h"

namespace slib {
namespace {

namespace gdip = Gdiplus::DllExports;

constexpr Gdiplus::PixelFormat kPixelFormat32bppCMYK = 15 | (32 << 8);  // not in MinGW's headers

std::wstring TargetMimeType(uint32_t targetType, Gdiplus::GpBitmap* source) {
    switch (targetType) {
        case FileType::kPng:
            return L"image/png";
        case FileType::kJpeg:
            return L"image/jpeg";
        default:
            return SourceMimeType(source);
    }
}

// The source's pixel format, except the formats a graphics context cannot draw into (CMYK
// included, which GDI+ only ever reads).
Gdiplus::PixelFormat TargetPixelFormat(Gdiplus::GpBitmap* source) {
    Gdiplus::PixelFormat format = PixelFormatUndefined;
    if (gdip::GdipGetImagePixelFormat(source, &format) != Gdiplus::Ok ||
        format == PixelFormatUndefined || (format & PixelFormatIndexed) != 0 ||
        format == PixelFormat16bppARGB1555 || format == PixelFormat16bppGrayScale ||
        format == kPixelFormat32bppCMYK) {
        return PixelFormat24bppRGB;
    }
    return format;
}

Gdiplus::GpStatus DrawScaled(Gdiplus::GpBitmap* source, Gdiplus::GpBitmap* target,
                             const PixelSize& size) {
    UniqueGdipGraphics graphics;
    Gdiplus::GpStatus status = gdip::GdipGetImageGraphicsContext(target, graphics.put());
    if (status != Gdiplus::Ok) {
        return status;
    }
    // Bicubic filtering reads beyond the picture's edges; by default it finds transparent black
    // there and darkens every border. Mirrored tiling gives it the edge's own pixels instead.
    UniqueGdipImageAttributes attributes;
    status = gdip::GdipCreateImageAttributes(attributes.put());
    if (status != Gdiplus::Ok) {
        return status;
    }
    status = gdip::GdipSetImageAttributesWrapMode(attributes.get(), Gdiplus::WrapModeTileFlipXY, 0,
                                                  FALSE);
    if (status != Gdiplus::Ok) {
        return status;
    }
    UINT width = 0;
    UINT height = 0;
    gdip::GdipGetImageWidth(source, &width);
    gdip::GdipGetImageHeight(source, &height);
    gdip::GdipSetInterpolationMode(graphics.get(), Gdiplus::InterpolationModeHighQualityBicubic);
    gdip::GdipSetPixelOffsetMode(graphics.get(), Gdiplus::PixelOffsetModeHighQuality);
    return gdip::GdipDrawImageRectRectI(graphics.get(), source, 0, 0, size.width, size.height, 0, 0,
                                        static_cast<INT>(width), static_cast<INT>(height),
                                        Gdiplus::UnitPixel, attributes.get(), nullptr, nullptr);
}

}  // namespace

void FileConverterImpl::convert(const String& source, uint32_t sourceType, const String& target,
                                uint32_t targetType) {
    RequireConvertibleTypes(sourceType, targetType);
    const ConversionSettings options = settings();
    StartGdiplus();

    const std::vector<uint8_t> bytes = ReadPictureFile(source, kConvertSourceMissing);
    UniqueGdipBitmap picture = LoadPicture(bytes);
    const std::wstring mimeType = TargetMimeType(targetType, picture.get());
    const PictureDimensions sourceSize = MeasurePicture(picture.get());

    UprightTurn turn = UprightTurnFor(0);
    SizeRequest request = options.size;
    if (options.exifRotate) {
        const std::optional<uint16_t> orientation = PictureOrientation(picture.get(), bytes);
        if (!orientation && options.requireOrientation) {
            Throw(kItemNotFound, "Picture has no exif");
        }
        turn = UprightTurnFor(orientation.value_or(0));
        if (turn.swapsSides) {
            // Scaling comes before turning, so the request is turned the other way.
            std::swap(request.width, request.height);
        }
    }
    const PixelSize size = ComputeTargetSize(sourceSize.width, sourceSize.height, request);

    RequireCreatableSize(size);
    UniqueGdipBitmap scaled;
    if (gdip::GdipCreateBitmapFromScan0(size.width, size.height, 0,
                                        TargetPixelFormat(picture.get()), nullptr,
                                        scaled.put()) != Gdiplus::Ok) {
        Throw(kUnclassified, "Cannot create a picture of that size");
    }
    if (DrawScaled(picture.get(), scaled.get(), size) != Gdiplus::Ok) {
        picture = LoadPicture(bytes);  // a fresh decode, drawn once more
        if (DrawScaled(picture.get(), scaled.get(), size) != Gdiplus::Ok) {
            Throw(kUnclassified, "Cannot draw the picture");
        }
    }
    picture.reset();

    for (const int32_t step : turn.steps) {
        if (step != kRotateNone &&
            gdip::GdipImageRotateFlip(scaled.get(), static_cast<Gdiplus::RotateFlipType>(step)) !=
                Gdiplus::Ok) {
            Throw(kUnclassified, "Cannot turn the picture");
        }
    }
    WritePictureFile(target, EncodePicture(scaled.get(), mimeType));
}

std::shared_ptr<FileConverter> MakeFileConverter() {
    return std::make_shared<FileConverterImpl>();
}

}  // namespace slib
