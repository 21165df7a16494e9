#include "library_module.h"

#include <windows.h>

namespace fmwrapper {

const uint32_t kMissingImportError = ERROR_PROC_NOT_FOUND;

void CloseLibrary(void* library) noexcept {
    FreeLibrary(static_cast<HMODULE>(library));
}

UniqueLibrary OpenLibrary(const std::u16string& path, uint32_t& error) {
    // The plug-in's own folder first, as the host looks for the DLLs a plug-in brings along.
    HMODULE module = LoadLibraryExW(reinterpret_cast<const wchar_t*>(path.c_str()), nullptr,
                                    LOAD_WITH_ALTERED_SEARCH_PATH);
    if (module == nullptr)
        error = GetLastError();
    return UniqueLibrary(module);
}

void* LibrarySymbol(void* library, const char* name, uint32_t& error) {
    void* symbol = reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
    if (symbol == nullptr)
        error = GetLastError();
    return symbol;
}

const void* LibraryContaining(const void* address) {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        static_cast<LPCWSTR>(address), &module);
    return module;
}

}  // namespace fmwrapper
