// Pixel dimensions read from the header of a PNG, GIF, BMP or JPEG file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace fmhost {

struct PictureSize {
    uint32_t width;
    uint32_t height;
};

// Nothing when the bytes are no such picture or the header is cut short.
std::optional<PictureSize> ReadPictureSize(const uint8_t* bytes, size_t size);

}  // namespace fmhost
