#pragma once
// The orientation a JPEG's own EXIF block records (APP1 "Exif", tag 274), read straight from the
// bytes: GDI+ under Wine never reports that property, so this is the fallback everywhere. The
// bytes are untrusted; every offset is checked against the buffer.

#include <cstddef>
#include <cstdint>
#include <optional>

namespace slib {

constexpr uint16_t kExifOrientationTag = 0x0112;

// The orientation value of the first EXIF block that has one, as stored (normally 1 to 8);
// nullopt when the bytes are no JPEG, have no EXIF block, or the block has no orientation.
std::optional<uint16_t> FindJpegExifOrientation(const uint8_t* bytes, size_t size);

}  // namespace slib
