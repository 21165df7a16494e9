#pragma once
// A decoded picture in memory: 8-bit RGBA with straight (not premultiplied) alpha, rows top to
// bottom without padding. The one layout the portable scaler and turner and the Linux decoders
// and encoders share, so no step needs to know where the pixels came from.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace slib {

struct Raster {
    uint32_t width = 0;
    uint32_t height = 0;
    bool hasAlpha = false;      // some pixel may be less than opaque
    std::vector<uint8_t> rgba;  // width * height * 4 bytes

    size_t stride() const { return size_t{width} * 4; }
    uint8_t* row(uint32_t y) { return rgba.data() + y * stride(); }
    const uint8_t* row(uint32_t y) const { return rgba.data() + y * stride(); }
};

}  // namespace slib
