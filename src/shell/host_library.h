// The host's library of plug-in functions (FMWrapper.dll, libFMWrapper.so), already loaded by the
// host before it loads us.
#pragma once

namespace fmlib {

// The library's export `name`, or null when the library is not loaded or lacks it.
void* HostLibrarySymbol(const char* name);

}  // namespace fmlib
