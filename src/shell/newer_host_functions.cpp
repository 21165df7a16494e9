#include "shell/newer_host_functions.h"

#include <atomic>

#include "shell/host_library.h"

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
    return HostLibrarySymbol(name);
}

}  // namespace fmlib
