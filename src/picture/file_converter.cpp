#include "picture/file_converter.h"

#include <cmath>
#include <cstdio>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/number.h"

namespace slib {
namespace {

std::optional<double> NumberOption(const std::map<int32_t, std::shared_ptr<const Object>>& options,
                                   int32_t key) {
    const auto found = options.find(key);
    if (found == options.end()) {
        return std::nullopt;
    }
    const auto* number = dynamic_cast<const Number*>(found->second.get());
    return number ? number->asDouble() : 0.0;
}

}  // namespace

void FileConverter::setOption(int32_t key, std::shared_ptr<const Object> value) {
    if (key < kOptionWidth || key > kOptionExifRotate) {
        Throw(kBadParameter, "Wrong parameter");
    }
    options_[key] = std::move(value);
}

ConversionSettings FileConverter::settings() const {
    ConversionSettings settings;
    settings.size.width = NumberOption(options_, kOptionWidth);
    settings.size.height = NumberOption(options_, kOptionHeight);
    settings.size.proportional = NumberOption(options_, kOptionProportional).value_or(0) != 0;
    settings.exifRotate = NumberOption(options_, kOptionExifRotate).value_or(0) != 0;
    settings.requireOrientation = requireOrientation_;
    return settings;
}

std::shared_ptr<const Object> MakeNumberOption(double value) {
    constexpr double kLimit = 1e15;  // far beyond any picture side, still exact in "%.6f"
    if (!std::isfinite(value)) {
        value = 0;
    }
    char text[48];
    std::snprintf(text, sizeof(text), "%.6f", std::fmax(-kLimit, std::fmin(kLimit, value)));
    std::shared_ptr<const Number> number = Number::FromDecimalText(text);
    return number ? number : std::make_shared<const Number>(0);
}

void RequireCreatableSize(const PixelSize& size) {
    // Far beyond any real picture, and short of the sizes whose byte count overflows in GDI+.
    constexpr int64_t kMaxSide = 1 << 16;
    constexpr int64_t kMaxPixels = int64_t{1} << 28;
    if (size.width > kMaxSide || size.height > kMaxSide ||
        int64_t{size.width} * size.height > kMaxPixels) {
        Throw(kBadParameter, "Cannot create a picture of that size");
    }
}

void RequireConvertibleTypes(uint32_t sourceType, uint32_t targetType) {
    if (sourceType != FileType::kUnspecified ||
        (targetType != FileType::kUnspecified && targetType != FileType::kJpeg &&
         targetType != FileType::kPng)) {
        Throw(kBadParameter, "Cannot convert these file types");
    }
}

}  // namespace slib
