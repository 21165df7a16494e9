// The host's text encodings (numbers 0 to 36): Windows converts through its code pages, Linux
// through iconv with the same tables, so both give the same bytes for the same text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fmwrapper {

// Both throw std::invalid_argument for a number outside 0..36 or an encoding this system lacks.
// Characters an encoding cannot hold become "?", one for each UTF-16 unit (Windows first tries a
// close letter of some code pages' own choosing, "A" for "\u0100" in 1252; Linux does not).
std::u16string Decode(const char* bytes, size_t length, int32_t encoding);
std::string Encode(std::u16string_view units, int32_t encoding);

// The longest prefix of `units` whose encoding fits into `capacity` bytes, encoded. Never ends
// inside a character: a multi-byte sequence or a surrogate pair is either whole or left out.
std::string EncodePrefix(std::u16string_view units, int32_t encoding, size_t capacity);

}  // namespace fmwrapper
