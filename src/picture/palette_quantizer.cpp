#include "picture/palette_quantizer.h"

#include <cstring>
#include <unordered_map>

namespace slib {
namespace {

constexpr size_t kMaxColours = 256;
constexpr uint32_t kRedLevels = 6;
constexpr uint32_t kGreenLevels = 7;
constexpr uint32_t kBlueLevels = 6;

uint32_t PixelAt(const uint8_t* rows, size_t stride, size_t x, size_t y) {
    uint32_t pixel;
    std::memcpy(&pixel, rows + y * stride + x * sizeof(uint32_t), sizeof(pixel));
    return pixel;
}

// The nearest of `levels` evenly spaced values from 0 to 255.
uint32_t Level(uint32_t channel, uint32_t levels) {
    return (channel * (levels - 1) + 127) / 255;
}

uint32_t LevelValue(uint32_t level, uint32_t levels) {
    return level * 255 / (levels - 1);
}

std::vector<uint32_t> CubePalette() {
    std::vector<uint32_t> palette;
    for (uint32_t r = 0; r < kRedLevels; ++r) {
        for (uint32_t g = 0; g < kGreenLevels; ++g) {
            for (uint32_t b = 0; b < kBlueLevels; ++b) {
                palette.push_back(0xFF000000u | (LevelValue(r, kRedLevels) << 16) |
                                  (LevelValue(g, kGreenLevels) << 8) | LevelValue(b, kBlueLevels));
            }
        }
    }
    return palette;
}

uint8_t CubeIndex(uint32_t argb) {
    const uint32_t r = Level((argb >> 16) & 0xFF, kRedLevels);
    const uint32_t g = Level((argb >> 8) & 0xFF, kGreenLevels);
    const uint32_t b = Level(argb & 0xFF, kBlueLevels);
    return static_cast<uint8_t>((r * kGreenLevels + g) * kBlueLevels + b);
}

}  // namespace

IndexedPixels QuantizeToPalette(const uint8_t* rows, size_t width, size_t height, size_t stride) {
    IndexedPixels result;
    result.indices.resize(width * height);
    std::unordered_map<uint32_t, uint8_t> exact;
    bool fits = true;
    for (size_t y = 0; y < height && fits; ++y) {
        for (size_t x = 0; x < width; ++x) {
            const uint32_t pixel = PixelAt(rows, stride, x, y);
            auto found = exact.find(pixel);
            if (found == exact.end()) {
                if (exact.size() == kMaxColours) {
                    fits = false;
                    break;
                }
                found = exact.emplace(pixel, static_cast<uint8_t>(exact.size())).first;
                result.palette.push_back(pixel);
            }
            result.indices[y * width + x] = found->second;
        }
    }
    if (fits) {
        return result;
    }
    result.palette = CubePalette();
    for (size_t y = 0; y < height; ++y) {
        for (size_t x = 0; x < width; ++x) {
            result.indices[y * width + x] = CubeIndex(PixelAt(rows, stride, x, y));
        }
    }
    return result;
}

}  // namespace slib
