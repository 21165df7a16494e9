// The console's UTF-8 through the system's own conversion, as the Windows host has always used.
#include <windows.h>

#include "value_format.h"

namespace fmhost::driver {

std::string ToUtf8(const std::u16string& text) {
    if (text.empty())
        return {};
    const auto* wide = reinterpret_cast<const wchar_t*>(text.data());
    const int units = static_cast<int>(text.size());
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide, units, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, units, &out[0], bytes, nullptr, nullptr);
    return out;
}

std::u16string FromUtf8(const std::string& text) {
    if (text.empty())
        return {};
    const int bytes = static_cast<int>(text.size());
    const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0);
    std::u16string out(static_cast<size_t>(units), u'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, reinterpret_cast<wchar_t*>(&out[0]), units);
    return out;
}

}  // namespace fmhost::driver
