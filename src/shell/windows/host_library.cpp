#include "shell/host_library.h"

#include <windows.h>

namespace fmlib {

void* HostLibrarySymbol(const char* name) {
    const HMODULE wrapper = GetModuleHandleW(L"FMWrapper.dll");
    if (wrapper == nullptr) {
        return nullptr;
    }
    return reinterpret_cast<void*>(GetProcAddress(wrapper, name));
}

}  // namespace fmlib
