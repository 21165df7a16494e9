// Base64 as the host's calculation functions use it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fmhost {

// Standard alphabet with "=" padding; a CR LF after every 76 characters (not at the end).
std::u16string Base64Encode(const uint8_t* bytes, size_t size);
// Ignores white space and line breaks; nothing for any other foreign character or a bad
// length.
std::optional<std::vector<uint8_t>> Base64Decode(std::u16string_view text);

}  // namespace fmhost
