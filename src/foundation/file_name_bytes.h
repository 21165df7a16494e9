#pragma once
// Linux names are bytes, our paths UTF-16 text. A name that is valid UTF-8 is its text; each byte
// of one that is not becomes the lone low surrogate U+DC80 + (byte - 0x80), so every name read
// from the disk reaches the host and comes back to the very same bytes.

#include <optional>
#include <string>
#include <string_view>

namespace slib {

std::u16string FileNameBytesToText(std::string_view bytes);

// Empty for text no name can hold: a NUL, or a lone surrogate that stands for no byte.
std::optional<std::string> TextToFileNameBytes(std::u16string_view text);

}  // namespace slib
