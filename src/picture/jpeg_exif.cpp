#include "picture/jpeg_exif.h"

#include <cstring>

namespace slib {
namespace {

constexpr uint8_t kMarkerPrefix = 0xFF;
constexpr uint8_t kStartOfImage = 0xD8;
constexpr uint8_t kEndOfImage = 0xD9;
constexpr uint8_t kStartOfScan = 0xDA;
constexpr uint8_t kApp1 = 0xE1;
constexpr uint16_t kTypeShort = 3;
constexpr size_t kIfdEntrySize = 12;

// A bounds-checked view of the TIFF structure inside an EXIF block.
class TiffReader {
  public:
    TiffReader(const uint8_t* bytes, size_t size, bool bigEndian)
        : bytes_(bytes), size_(size), bigEndian_(bigEndian) {}

    std::optional<uint16_t> u16(size_t offset) const {
        if (offset > size_ || size_ - offset < 2) {
            return std::nullopt;
        }
        const uint8_t* p = bytes_ + offset;
        return static_cast<uint16_t>(bigEndian_ ? (p[0] << 8) | p[1] : (p[1] << 8) | p[0]);
    }

    std::optional<uint32_t> u32(size_t offset) const {
        const auto first = u16(offset);
        const auto second = u16(offset + 2);
        if (!first || !second) {
            return std::nullopt;
        }
        return bigEndian_ ? (uint32_t{*first} << 16) | *second : (uint32_t{*second} << 16) | *first;
    }

  private:
    const uint8_t* bytes_;
    size_t size_;
    bool bigEndian_;
};

// The orientation entry of IFD0 in a TIFF structure ("II*\0" or "MM\0*").
std::optional<uint16_t> OrientationInTiff(const uint8_t* tiff, size_t size) {
    if (size < 8) {
        return std::nullopt;
    }
    bool bigEndian;
    if (tiff[0] == 'I' && tiff[1] == 'I') {
        bigEndian = false;
    } else if (tiff[0] == 'M' && tiff[1] == 'M') {
        bigEndian = true;
    } else {
        return std::nullopt;
    }
    const TiffReader reader(tiff, size, bigEndian);
    const auto magic = reader.u16(2);
    const auto ifdOffset = reader.u32(4);
    if (!magic || *magic != 42 || !ifdOffset) {
        return std::nullopt;
    }
    const auto count = reader.u16(*ifdOffset);
    if (!count) {
        return std::nullopt;
    }
    for (size_t entry = 0; entry < *count; ++entry) {
        const size_t at = size_t{*ifdOffset} + 2 + entry * kIfdEntrySize;
        const auto tag = reader.u16(at);
        const auto type = reader.u16(at + 2);
        const auto valueCount = reader.u32(at + 4);
        if (!tag || !type || !valueCount) {
            return std::nullopt;  // the directory runs past the block
        }
        if (*tag == kExifOrientationTag && *type == kTypeShort && *valueCount >= 1) {
            return reader.u16(at + 8);  // a single short sits in the entry's value field
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<uint16_t> FindJpegExifOrientation(const uint8_t* bytes, size_t size) {
    if (bytes == nullptr || size < 4 || bytes[0] != kMarkerPrefix || bytes[1] != kStartOfImage) {
        return std::nullopt;
    }
    static const uint8_t kExifHeader[] = {'E', 'x', 'i', 'f', 0, 0};
    size_t at = 2;
    while (at + 1 < size) {
        if (bytes[at] != kMarkerPrefix) {
            return std::nullopt;  // not at a marker: the segment chain is broken
        }
        const uint8_t marker = bytes[at + 1];
        if (marker == kMarkerPrefix) {
            ++at;  // fill byte
            continue;
        }
        if (marker == kEndOfImage || marker == kStartOfScan) {
            return std::nullopt;  // metadata only comes before the image data
        }
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) {
            at += 2;  // markers without a length
            continue;
        }
        if (size - at < 4) {
            return std::nullopt;
        }
        const size_t length = (size_t{bytes[at + 2]} << 8) | bytes[at + 3];
        if (length < 2 || length > size - at - 2) {
            return std::nullopt;
        }
        const uint8_t* payload = bytes + at + 4;
        const size_t payloadSize = length - 2;
        if (marker == kApp1 && payloadSize >= sizeof(kExifHeader) &&
            std::memcmp(payload, kExifHeader, sizeof(kExifHeader)) == 0) {
            if (auto orientation = OrientationInTiff(payload + sizeof(kExifHeader),
                                                     payloadSize - sizeof(kExifHeader))) {
                return orientation;
            }
        }
        at += 2 + length;
    }
    return std::nullopt;
}

}  // namespace slib
