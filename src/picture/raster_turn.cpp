#include "picture/raster_turn.h"

#include <cstring>
#include <utility>

namespace slib {
namespace {

// Where target pixel (x, y) comes from: source x = ax + bx * x + cx * y, the same for y.
struct SourceMap {
    int64_t ax, bx, cx, ay, by, cy;
};

Raster Remapped(const Raster& source, bool swapsSides, const SourceMap& map) {
    Raster target;
    target.width = swapsSides ? source.height : source.width;
    target.height = swapsSides ? source.width : source.height;
    target.hasAlpha = source.hasAlpha;
    target.rgba.resize(source.rgba.size());
    for (uint32_t y = 0; y < target.height; ++y) {
        uint8_t* out = target.row(y);
        for (uint32_t x = 0; x < target.width; ++x, out += 4) {
            const auto sx = static_cast<uint32_t>(map.ax + map.bx * x + map.cx * y);
            const auto sy = static_cast<uint32_t>(map.ay + map.by * x + map.cy * y);
            std::memcpy(out, source.row(sy) + size_t{sx} * 4, 4);
        }
    }
    return target;
}

Raster Step(const Raster& source, int32_t step) {
    const int64_t w = source.width;
    const int64_t h = source.height;
    switch (step) {
        case kRotate90:
            return Remapped(source, true, {0, 0, 1, h - 1, -1, 0});
        case kRotate180:
            return Remapped(source, false, {w - 1, -1, 0, h - 1, 0, -1});
        case kRotate270:
            return Remapped(source, true, {w - 1, 0, -1, 0, 1, 0});
        case kFlipHorizontal:
            return Remapped(source, false, {w - 1, -1, 0, 0, 0, 1});
        case kFlipVertical:
            return Remapped(source, false, {0, 1, 0, h - 1, 0, -1});
        default:
            return source;
    }
}

}  // namespace

Raster TurnRaster(Raster source, const UprightTurn& turn) {
    for (const int32_t step : turn.steps) {
        if (step != kRotateNone) {
            source = Step(source, step);
        }
    }
    return source;
}

}  // namespace slib
