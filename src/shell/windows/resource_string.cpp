#include <windows.h>

#include <vector>

#include "shell/resource_text.h"
#include "shell/shell_state.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace fmlib {

namespace {

HINSTANCE PluginInstance() {
    if (gCallRecord != nullptr && gCallRecord->instanceID != 0) {
        return reinterpret_cast<HINSTANCE>(gCallRecord->instanceID);
    }
    // Only reachable before the host's first message; our own module is the right answer.
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

}  // namespace

std::u16string LoadResourceString(uint32_t id, size_t capacity) {
    if (capacity == 0) {
        return {};
    }
    std::vector<wchar_t> buffer(capacity, L'\0');
    const int length =
        LoadStringW(PluginInstance(), id, buffer.data(), static_cast<int>(buffer.size()));
    return std::u16string(reinterpret_cast<const char16_t*>(buffer.data()),
                          static_cast<size_t>(length > 0 ? length : 0));
}

}  // namespace fmlib
