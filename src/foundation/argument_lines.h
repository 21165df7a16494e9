#pragma once
// How VFile_Run's one text becomes a program's arguments, on every system.

#include <string>
#include <vector>

namespace slib {

// The lines of `text` split at carriage returns, each one argument; an empty text has none.
std::vector<std::u16string> ArgumentLines(const std::u16string& text);

}  // namespace slib
