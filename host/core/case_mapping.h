// Upper / lower case of single UTF-16 code units (Latin, Greek, Cyrillic, full-width Latin).
// One unit maps to one unit, so positions stay valid: the expansion of "ß" is not done.
#pragma once

#include <string>
#include <string_view>

namespace fmhost {

char16_t ToUpper(char16_t c);
char16_t ToLower(char16_t c);
std::u16string ToUpper(std::u16string_view text);
std::u16string ToLower(std::u16string_view text);
// Case-insensitive comparison: <0, 0, >0 of the lower-cased texts.
int CompareIgnoringCase(std::u16string_view a, std::u16string_view b);
bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b);

}  // namespace fmhost
