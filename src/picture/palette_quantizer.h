#pragma once
// Reduces 32-bit ARGB pixels to at most 256 palette entries, for formats that only store indexed
// pixels (GIF): GDI+ under Wine writes an empty GIF from a true-colour bitmap, so the plug-in
// hands the encoder an indexed one everywhere. A picture with 256 colours or fewer keeps them
// exactly; a richer one maps each pixel to the nearest colour of a fixed 6x7x6 colour cube.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace slib {

struct IndexedPixels {
    std::vector<uint32_t> palette;  // ARGB, at most 256 entries
    std::vector<uint8_t> indices;   // one per pixel, rows top to bottom, no padding
};

// `rows` points at `height` rows of `width` ARGB pixels, `stride` bytes apart.
IndexedPixels QuantizeToPalette(const uint8_t* rows, size_t width, size_t height, size_t stride);

}  // namespace slib
