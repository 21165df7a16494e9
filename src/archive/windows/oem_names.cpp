#include "archive/oem_names.h"

#include <windows.h>

namespace archive {

std::u16string DecodeOemName(std::string_view bytes) {
    if (bytes.empty()) {
        return {};
    }
    const int length = static_cast<int>(bytes.size());
    const int needed = MultiByteToWideChar(CP_OEMCP, 0, bytes.data(), length, nullptr, 0);
    if (needed <= 0) {
        return {};
    }
    std::u16string text(static_cast<size_t>(needed), u'\0');
    MultiByteToWideChar(CP_OEMCP, 0, bytes.data(), length, reinterpret_cast<wchar_t*>(&text[0]),
                        needed);
    return text;
}

}  // namespace archive
