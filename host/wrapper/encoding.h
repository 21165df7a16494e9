// The host's text encodings (numbers 0 to 36) and their Windows code pages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fmwrapper {

// The code page an encoding number names (0, the native encoding, is the ANSI code page).
// Throws std::invalid_argument for a number outside 0..36 or a code page this system lacks.
uint32_t CodePageOf(int32_t encoding);

std::u16string Decode(const char* bytes, size_t length, int32_t encoding);
std::string Encode(std::u16string_view units, int32_t encoding);

// The longest prefix of `units` whose encoding fits into `capacity` bytes, encoded. Never ends
// inside a character: a multi-byte sequence or a surrogate pair is either whole or left out.
std::string EncodePrefix(std::u16string_view units, int32_t encoding, size_t capacity);

}  // namespace fmwrapper
