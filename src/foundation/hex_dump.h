#pragma once
// The "hex-dump" text form of bytes: two upper-case digits per byte, blanks between bytes, a
// carriage return after every sixteenth byte ("48 69 0A").

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace slib {

// ASCII text; empty for no bytes, never a trailing blank or line break.
std::string EncodeHexDump(const uint8_t* bytes, size_t size);

// Digits of either case, in pairs; blanks, tabs and line breaks may separate groups of pairs.
// Anything else throws -50 naming what is wrong; nothing is returned half-decoded.
std::vector<uint8_t> DecodeHexDump(std::u16string_view text);

}  // namespace slib
