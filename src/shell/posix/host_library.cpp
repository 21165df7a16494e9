#include "shell/host_library.h"

#include <dlfcn.h>

#include "foundation/unique_resource.h"

namespace fmlib {

namespace {

void CloseLibrary(void* library) {
    dlclose(library);
}

// Each successful dlopen counts a reference, which dlclose gives back.
using UniqueLibrary = slib::UniqueResource<void*, &CloseLibrary>;

}  // namespace

void* HostLibrarySymbol(const char* name) {
    // RTLD_NOLOAD: only the copy the host loaded; never load one ourselves.
    const UniqueLibrary wrapper(dlopen("libFMWrapper.so", RTLD_LAZY | RTLD_NOLOAD));
    if (!wrapper.valid()) {
        return nullptr;
    }
    return dlsym(wrapper.get(), name);
}

}  // namespace fmlib
