#pragma once
// Case-insensitive comparison of path text, the way the Windows file system matches names for
// the scripts our users write in: ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic letters.

#include <string_view>

namespace slib {

char16_t SimpleUpperCase(char16_t unit);
bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b);
bool StartsWithIgnoringCase(std::u16string_view text, std::u16string_view prefix);

}  // namespace slib
