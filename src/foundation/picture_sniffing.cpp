#include "foundation/picture_sniffing.h"

#include <cstring>

namespace slib {

namespace {

uint32_t BigEndian(const uint8_t* bytes, size_t count) {
    uint32_t value = 0;
    for (size_t index = 0; index < count; ++index) {
        value = value << 8 | bytes[index];
    }
    return value;
}

uint32_t LittleEndian(const uint8_t* bytes, size_t count) {
    uint32_t value = 0;
    for (size_t index = count; index > 0; --index) {
        value = value << 8 | bytes[index - 1];
    }
    return value;
}

bool StartsWith(const uint8_t* bytes, size_t size, const char* magic, size_t length) {
    return size >= length && std::memcmp(bytes, magic, length) == 0;
}

PictureFacts WithSize(PictureKind kind, int64_t width, int64_t height) {
    PictureFacts facts{kind};
    if (width > 0 && height > 0 && width <= 0x7FFF && height <= 0x7FFF) {
        facts.width = static_cast<uint16_t>(width);
        facts.height = static_cast<uint16_t>(height);
    }
    return facts;
}

// Walks the marker segments up to the first start-of-frame, which carries the size.
PictureFacts JpegFacts(const uint8_t* bytes, size_t size) {
    size_t position = 2;
    while (position + 4 <= size) {
        if (bytes[position] != 0xFF) {
            break;
        }
        const uint8_t marker = bytes[position + 1];
        if (marker == 0xFF) {
            ++position;  // fill byte
            continue;
        }
        const bool startOfFrame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        const size_t length = BigEndian(bytes + position + 2, 2);
        if (startOfFrame && position + 9 <= size) {
            return WithSize(PictureKind::kJpeg, BigEndian(bytes + position + 7, 2),
                            BigEndian(bytes + position + 5, 2));
        }
        if (length < 2) {
            break;
        }
        position += 2 + length;
    }
    return PictureFacts{PictureKind::kJpeg};
}

// The first image's width and height tags (256, 257) of the first directory.
PictureFacts TiffFacts(const uint8_t* bytes, size_t size) {
    const bool little = bytes[0] == 'I';
    auto number = [&](size_t offset, size_t count) -> uint32_t {
        if (offset + count > size) {
            return 0;
        }
        return little ? LittleEndian(bytes + offset, count) : BigEndian(bytes + offset, count);
    };
    const uint32_t directory = number(4, 4);
    const uint32_t entries = number(directory, 2);
    int64_t width = 0;
    int64_t height = 0;
    for (uint32_t entry = 0; entry < entries && entry < 4096; ++entry) {
        const size_t at = size_t{directory} + 2 + size_t{entry} * 12;
        const uint32_t tag = number(at, 2);
        const uint32_t type = number(at + 2, 2);
        const uint32_t value = type == 3 ? number(at + 8, 2) : type == 4 ? number(at + 8, 4) : 0;
        if (tag == 256) {
            width = value;
        } else if (tag == 257) {
            height = value;
        }
    }
    return WithSize(PictureKind::kTiff, width, height);
}

}  // namespace

std::optional<PictureFacts> SniffPicture(const uint8_t* bytes, size_t size) {
    if (StartsWith(bytes, size, "\xFF\xD8\xFF", 3)) {
        return JpegFacts(bytes, size);
    }
    if (StartsWith(bytes, size, "\x89PNG\r\n\x1A\n", 8)) {
        if (size >= 24 && std::memcmp(bytes + 12, "IHDR", 4) == 0) {
            return WithSize(PictureKind::kPng, BigEndian(bytes + 16, 4), BigEndian(bytes + 20, 4));
        }
        return PictureFacts{PictureKind::kPng};
    }
    if (StartsWith(bytes, size, "GIF87a", 6) || StartsWith(bytes, size, "GIF89a", 6)) {
        if (size >= 10) {
            return WithSize(PictureKind::kGif, LittleEndian(bytes + 6, 2),
                            LittleEndian(bytes + 8, 2));
        }
        return PictureFacts{PictureKind::kGif};
    }
    // "BM" alone is too common a start for text; the header size field must be a known one.
    if (StartsWith(bytes, size, "BM", 2) && size >= 26) {
        const uint32_t headerSize = LittleEndian(bytes + 14, 4);
        if (headerSize == 12) {
            return WithSize(PictureKind::kBmp, LittleEndian(bytes + 18, 2),
                            LittleEndian(bytes + 20, 2));
        }
        if ((headerSize == 40 || headerSize == 52 || headerSize == 56 || headerSize == 108 ||
             headerSize == 124) &&
            size >= 26) {
            const int32_t height = static_cast<int32_t>(LittleEndian(bytes + 22, 4));
            return WithSize(PictureKind::kBmp, static_cast<int32_t>(LittleEndian(bytes + 18, 4)),
                            height < 0 ? -static_cast<int64_t>(height) : height);
        }
    }
    if (StartsWith(bytes, size, "II*\0", 4) || StartsWith(bytes, size, "MM\0*", 4)) {
        return TiffFacts(bytes, size);
    }
    return std::nullopt;
}

}  // namespace slib
