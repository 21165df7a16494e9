// wchar_t text <-> UTF-16. wchar_t is a UTF-16 unit on Windows and a UTF-32 code point on
// Linux; the host's wide-character calls and its control interface take whichever the system
// has, while everything inside the host is UTF-16.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fmhost {

// Code points that are no Unicode scalar value (above U+10FFFF, lone surrogates in UTF-32)
// become U+FFFD.
std::u16string Utf16FromWide(std::wstring_view wide);
std::wstring WideFromUtf16(std::u16string_view utf16);

}  // namespace fmhost
