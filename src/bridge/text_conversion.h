// Bytes to host text and back, for the text encodings of VFile_Read and VFile_Write.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "fmx_functions.h"
#include "shell/host_objects.h"

namespace bridge {

// Host text decoded from bytes with a host encoding number (0..36), or as UTF-16 code units
// (encoding::kUtf16; an odd last byte is dropped).
fmlib::TextPtr DecodeText(const uint8_t* bytes, size_t size, int32_t encoding);

// Text of unknown encoding: a byte-order mark decides (UTF-8, UTF-16 LE or BE, the mark itself
// dropped), else valid UTF-8, else the native code page.
fmlib::TextPtr DecodeAutomaticText(const uint8_t* bytes, size_t size);

// The host's own conversion of the whole text into a host encoding (0..36). A character the
// encoding cannot represent becomes what the host makes of it; every byte before it is kept.
std::vector<uint8_t> EncodeText(const FmxText& text, int32_t encoding);

// The text's UTF-16 code units, little-endian, no byte-order mark.
std::vector<uint8_t> Utf16Bytes(const FmxText& text);

}  // namespace bridge
