#pragma once
// UTF-8 <-> UTF-16 conversion for portable code. Malformed input never fails: each bad sequence
// (or unpaired surrogate) becomes U+FFFD, so no text is silently dropped.

#include <string>
#include <string_view>

namespace slib {

std::u16string Utf8ToUtf16(std::string_view utf8);
std::string Utf16ToUtf8(std::u16string_view utf16);

}  // namespace slib
