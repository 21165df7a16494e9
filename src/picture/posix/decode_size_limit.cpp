#include "picture/posix/decode_size_limit.h"

#include <algorithm>
#include <atomic>

#include "picture/posix/codec_errors.h"

namespace slib {
namespace {

constexpr uint64_t kMaxSide = uint64_t{1} << 16;
constexpr uint64_t kMaxPixels = uint64_t{1} << 28;

std::atomic<uint64_t> g_pixelCap{kMaxPixels};

}  // namespace

void RequireDecodableSize(uint64_t width, uint64_t height) {
    if (width == 0 || height == 0) {
        ThrowPictureDamaged();
    }
    if (width > kMaxSide || height > kMaxSide || width * height > g_pixelCap.load()) {
        ThrowPictureTooLarge();
    }
}

uint64_t DecodedPixelCap() {
    return g_pixelCap.load();
}

void SetDecodedPixelCap(uint64_t pixels) {
    g_pixelCap.store(pixels == 0 ? kMaxPixels : std::min(pixels, kMaxPixels));
}

}  // namespace slib
