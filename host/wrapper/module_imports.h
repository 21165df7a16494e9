// The names a plug-in's library file takes from the host's plug-in interface library, read from
// the file on disk before anything of it is loaded.
#pragma once

#include <string>
#include <vector>

namespace fmwrapper {

// Windows: the by-name imports of FMWrapper.dll's import entry. Linux: every undefined symbol of
// the dynamic symbol table (an ELF file does not say which library is to provide one). Empty
// when the file cannot be read or is no 64-bit library of this system.
std::vector<std::string> HostImports(const std::u16string& libraryPath);

}  // namespace fmwrapper
