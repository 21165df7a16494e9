#pragma once
// Our UTF-16 text as the wide-character strings the system's W functions take (wchar_t is 16
// bits on Windows, so this is a view, not a conversion).

#include <string>

namespace slib {

inline const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

}  // namespace slib
