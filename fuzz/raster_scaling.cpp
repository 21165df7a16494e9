// The scaler and turner on any small picture at any target size: no read or write outside the
// rasters, and the promises that do not depend on the pixels (the size asked for, an opaque
// picture staying opaque, a fully transparent pixel carrying no colour).
// fuzz-sources: src/picture/r*.cpp src/picture/upright_turn.cpp
// fuzz-sources: src/foundation/worker_threads.cpp src/foundation/posix/error_boxes.cpp
#include <cstddef>
#include <cstdint>

#include "picture/raster_resize.h"
#include "picture/raster_turn.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 6) {
        return 0;
    }
    slib::Raster source;
    source.width = data[0] % 48 + 1;
    source.height = data[1] % 48 + 1;
    const uint32_t width = (data[2] | (data[3] & 1) << 8) + 1;
    const uint32_t height = (data[4] | (data[3] & 2) << 7) + 1;
    const uint16_t orientation = data[5] % 10;
    data += 6;
    size -= 6;
    source.rgba.resize(source.stride() * source.height);
    for (size_t i = 0; i < source.rgba.size(); ++i) {
        source.rgba[i] = size == 0 ? 0 : data[i % size];
    }
    for (size_t i = 3; i < source.rgba.size(); i += 4) {
        source.hasAlpha = source.hasAlpha || source.rgba[i] != 255;
    }
    const slib::Raster scaled = slib::ResizeRaster(source, width, height);
    if (scaled.width != width || scaled.height != height ||
        scaled.rgba.size() != size_t{width} * height * 4 || scaled.hasAlpha != source.hasAlpha) {
        __builtin_trap();
    }
    // The same size is an exact copy, hidden colour included; any other is filtered.
    const bool filtered = width != source.width || height != source.height;
    for (size_t i = 0; i < scaled.rgba.size(); i += 4) {
        const bool hiddenColour =
            scaled.rgba[i + 3] == 0 && (scaled.rgba[i] | scaled.rgba[i + 1] | scaled.rgba[i + 2]);
        if ((!scaled.hasAlpha && scaled.rgba[i + 3] != 255) || (filtered && hiddenColour)) {
            __builtin_trap();
        }
    }
    const slib::Raster upright = slib::TurnRaster(scaled, slib::UprightTurnFor(orientation));
    if (upright.rgba.size() != scaled.rgba.size() ||
        uint64_t{upright.width} * upright.height != uint64_t{width} * height) {
        __builtin_trap();
    }
    return 0;
}
