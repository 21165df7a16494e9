#pragma once
// VFile_Run's arguments arrive as one text, one argument per carriage-return separated line.

#include <string>
#include <vector>

namespace slib {

// The lines of `text` split at carriage returns; an empty text has none, and an empty line is an
// empty argument.
std::vector<std::u16string> SplitArgumentLines(const std::u16string& text);

}  // namespace slib
