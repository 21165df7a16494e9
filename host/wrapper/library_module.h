// A plug-in's library file as the system loads it: opened with every symbol resolved at once
// (as the host's loader does), its exported entry point, and which loaded library an address
// belongs to. Errors are the system's own numbers (Windows error codes, errno on Linux).
#pragma once

#include <cstdint>
#include <string>

#include "foundation/unique_resource.h"

namespace fmwrapper {

void CloseLibrary(void* library) noexcept;
using UniqueLibrary = slib::UniqueResource<void*, &CloseLibrary>;

// Empty, with `error` set, when the system cannot load it.
UniqueLibrary OpenLibrary(const std::u16string& path, uint32_t& error);
// Null, with `error` set, when the library exports no such symbol.
void* LibrarySymbol(void* library, const char* name, uint32_t& error);
// The same value for every address inside one loaded library; null outside any.
const void* LibraryContaining(const void* address);

// What the system reports for a library that needs a symbol no loaded library provides.
extern const uint32_t kMissingImportError;

}  // namespace fmwrapper
