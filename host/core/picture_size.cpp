#include "core/picture_size.h"

#include <cstring>

namespace fmhost {
namespace {

uint32_t BigEndian(const uint8_t* p, int n) {
    uint32_t v = 0;
    for (int i = 0; i < n; ++i)
        v = (v << 8) | p[i];
    return v;
}

uint32_t LittleEndian(const uint8_t* p, int n) {
    uint32_t v = 0;
    for (int i = n; i-- > 0;)
        v = (v << 8) | p[i];
    return v;
}

std::optional<PictureSize> JpegSize(const uint8_t* bytes, size_t size) {
    size_t pos = 2;  // after SOI
    while (pos + 4 <= size) {
        if (bytes[pos] != 0xFF)
            return std::nullopt;
        const uint8_t marker = bytes[pos + 1];
        if (marker == 0xFF) {  // fill byte
            ++pos;
            continue;
        }
        const uint32_t length = BigEndian(bytes + pos + 2, 2);
        // Start-of-frame markers carry the dimensions (C4, C8 and CC are not frames).
        const bool frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame) {
            if (pos + 9 > size)
                return std::nullopt;
            return PictureSize{BigEndian(bytes + pos + 7, 2), BigEndian(bytes + pos + 5, 2)};
        }
        if (length < 2)
            return std::nullopt;
        pos += 2 + length;
    }
    return std::nullopt;
}

}  // namespace

std::optional<PictureSize> ReadPictureSize(const uint8_t* bytes, size_t size) {
    static const uint8_t kPng[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    if (size >= 24 && std::memcmp(bytes, kPng, sizeof kPng) == 0) {
        return PictureSize{BigEndian(bytes + 16, 4), BigEndian(bytes + 20, 4)};
    }
    if (size >= 10 && std::memcmp(bytes, "GIF8", 4) == 0) {
        return PictureSize{LittleEndian(bytes + 6, 2), LittleEndian(bytes + 8, 2)};
    }
    if (size >= 26 && bytes[0] == 'B' && bytes[1] == 'M') {
        // Height is negative for top-down bitmaps.
        const int32_t height = static_cast<int32_t>(LittleEndian(bytes + 22, 4));
        return PictureSize{LittleEndian(bytes + 18, 4),
                           static_cast<uint32_t>(height < 0 ? -int64_t(height) : height)};
    }
    if (size >= 4 && bytes[0] == 0xFF && bytes[1] == 0xD8)
        return JpegSize(bytes, size);
    return std::nullopt;
}

}  // namespace fmhost
