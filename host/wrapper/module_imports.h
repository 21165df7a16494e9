// The names a library file imports from one module, read from its import table on disk, before
// anything of it is loaded.
#pragma once

#include <string>
#include <vector>

namespace fmwrapper {

// Imports by name from `module` (compared without regard to case). Empty when the file cannot be
// read or is no 64-bit image; imports by ordinal are left out.
std::vector<std::string> ImportsFrom(const std::wstring& libraryPath, const char* module);

}  // namespace fmwrapper
