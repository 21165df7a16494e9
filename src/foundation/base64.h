#pragma once
// Base64 (RFC 4648, standard alphabet, "=" padding) for the "base64" encoding of file contents.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace slib {

// ASCII text with padding and no line breaks.
std::string EncodeBase64(const uint8_t* bytes, size_t size);

// Blanks, tabs and line breaks anywhere are skipped; padding is optional but, when present, ends
// the text. Any other character, or a lone final character, throws -50.
std::vector<uint8_t> DecodeBase64(std::u16string_view text);

}  // namespace slib
