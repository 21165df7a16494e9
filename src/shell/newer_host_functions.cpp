#include "shell/newer_host_functions.h"

#include <windows.h>

#include <atomic>

namespace fmlib {

namespace {

std::atomic<int16_t> gHostExtensionVersion{0};

}  // namespace

void RememberHostExtensionVersion(int16_t version) {
    gHostExtensionVersion = version;
}

void* FindNewerHostFunction(const char* name, int16_t since) {
    if (gHostExtensionVersion < since) {
        return nullptr;
    }
    const HMODULE wrapper = GetModuleHandleW(L"FMWrapper.dll");
    if (wrapper == nullptr) {
        return nullptr;
    }
    return reinterpret_cast<void*>(GetProcAddress(wrapper, name));
}

}  // namespace fmlib
