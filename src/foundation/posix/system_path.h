#pragma once
// Our paths are UTF-16 text, Linux's are bytes: the one conversion between them
// (TextToFileNameBytes), so that every name read from the disk comes back to the same bytes.

#include <optional>
#include <string>

#include "foundation/utf16_string.h"

namespace slib {

// Empty for text no path can hold (a NUL, a lone surrogate that stands for no byte).
std::optional<std::string> SystemPath(const std::u16string& path);

// The folder part of a system path ("." for a bare name, "/" for an item at the root).
std::string FolderOf(const std::string& path);

}  // namespace slib
