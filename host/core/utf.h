// UTF-8 <-> UTF-16 conversion. Malformed input becomes U+FFFD; it never fails.
#pragma once

#include <string>
#include <string_view>

namespace fmhost {

std::u16string Utf8ToUtf16(std::string_view utf8);
std::string Utf16ToUtf8(std::u16string_view utf16);

}  // namespace fmhost
