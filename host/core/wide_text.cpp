#include "core/wide_text.h"

#include <cstdint>

namespace fmhost {
namespace {

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == sizeof(char16_t);
constexpr char16_t kReplacement = 0xFFFD;

bool IsSurrogate(uint32_t cp) {
    return cp >= 0xD800 && cp <= 0xDFFF;
}

void AppendCodePoint(std::u16string& out, uint32_t cp) {
    if (cp > 0x10FFFF || IsSurrogate(cp)) {
        out.push_back(kReplacement);
    } else if (cp >= 0x10000) {
        cp -= 0x10000;
        out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
    } else {
        out.push_back(static_cast<char16_t>(cp));
    }
}

}  // namespace

std::u16string Utf16FromWide(std::wstring_view wide) {
    std::u16string out;
    out.reserve(wide.size());
    for (const wchar_t c : wide) {
        if (kWideIsUtf16) {
            out.push_back(static_cast<char16_t>(c));
        } else {
            AppendCodePoint(out, static_cast<uint32_t>(c));
        }
    }
    return out;
}

// A lone surrogate stays as it is where wchar_t is UTF-16 (the units are the text) and becomes
// U+FFFD where it is UTF-32 (no code point can hold it).
std::wstring WideFromUtf16(std::u16string_view utf16) {
    std::wstring out;
    out.reserve(utf16.size());
    for (size_t i = 0; i < utf16.size(); ++i) {
        const uint32_t unit = utf16[i];
        if (kWideIsUtf16) {
            out.push_back(static_cast<wchar_t>(unit));
        } else if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < utf16.size() &&
                   utf16[i + 1] >= 0xDC00 && utf16[i + 1] <= 0xDFFF) {
            out.push_back(
                static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (utf16[i + 1] - 0xDC00)));
            ++i;
        } else {
            out.push_back(static_cast<wchar_t>(IsSurrogate(unit) ? kReplacement : unit));
        }
    }
    return out;
}

}  // namespace fmhost
