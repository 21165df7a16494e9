// Test support: pixels to picture bytes and back through the system's own picture engine, the
// one place the shared test pictures depend on the system.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace picturetest {

// Pixels as 0xAARRGGBB, rows top to bottom.
struct Pixels {
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<uint32_t> argb;

    uint32_t at(uint32_t x, uint32_t y) const { return argb[size_t{y} * width + x]; }
};

// The picture encoded as `mimeType` ("image/jpeg", "image/png", ...).
std::string EncodePixels(const wchar_t* mimeType, const Pixels& pixels);
// The decoded picture, or nullopt when the bytes do not decode.
std::optional<Pixels> DecodePixels(const std::string& bytes);

}  // namespace picturetest
