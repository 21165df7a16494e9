#pragma once
// Recognising a picture by its first bytes, and its pixel size where the header tells it.

#include <cstddef>
#include <cstdint>
#include <optional>

namespace slib {

enum class PictureKind { kJpeg, kPng, kGif, kBmp, kTiff };

struct PictureFacts {
    PictureKind kind;
    // 0 when the header does not say or the size does not fit the host's 16-bit fields.
    uint16_t width = 0;
    uint16_t height = 0;
};

// Reads only `size` bytes: enough of the head of a file for every kind (a JPEG's frame header
// may come after large metadata segments; past the bytes given the size stays 0).
std::optional<PictureFacts> SniffPicture(const uint8_t* bytes, size_t size);

}  // namespace slib
