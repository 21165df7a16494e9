#include "library_module.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>

#include "core/utf.h"

namespace fmwrapper {

// dlopen reports a missing symbol as text only; this is the number a file that exists but
// cannot be loaded gets.
const uint32_t kMissingImportError = ELIBBAD;

void CloseLibrary(void* library) noexcept {
    dlclose(library);
}

// RTLD_LOCAL: each plug-in's symbols stay its own, as every server engine keeps them.
UniqueLibrary OpenLibrary(const std::u16string& path, uint32_t& error) {
    const std::string file = fmhost::Utf16ToUtf8(path);
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        error = access(file.c_str(), R_OK) == 0 ? kMissingImportError : errno;
    return UniqueLibrary(library);
}

void* LibrarySymbol(void* library, const char* name, uint32_t& error) {
    void* symbol = dlsym(library, name);
    if (symbol == nullptr)
        error = ENOSYS;
    return symbol;
}

const void* LibraryContaining(const void* address) {
    Dl_info info{};
    if (dladdr(address, &info) == 0)
        return nullptr;
    return info.dli_fbase;
}

}  // namespace fmwrapper
