#pragma once
// Reading back what the open-file dialog wrote into its names buffer.

#include <cstddef>
#include <string>
#include <vector>

namespace slib {

// The full paths in `buffer` (at most `capacity` units are read, so an unterminated buffer is
// safe). One item chosen: "C:\d\a.txt\0\0" gives {"C:\d\a.txt"}. Several: the folder, then each
// name, then an empty string: "C:\d\0a\0b\0\0" gives {"C:\d\a", "C:\d\b"} in the dialog's
// order. A folder that already ends in "\" (a drive's root) gets no second one. An empty buffer
// gives no paths.
std::vector<std::u16string> SplitChosenNames(const char16_t* buffer, size_t capacity);

}  // namespace slib
