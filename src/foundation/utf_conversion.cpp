#include "foundation/utf_conversion.h"

#include <cstdint>

namespace slib {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// Decodes one code point at `pos` and advances it; returns kReplacement for a malformed sequence
// (overlong, surrogate, beyond U+10FFFF or truncated), consuming only the bytes that belong to it.
char32_t DecodeUtf8(std::string_view text, size_t& pos) {
    const unsigned char lead = static_cast<unsigned char>(text[pos++]);
    if (lead < 0x80) {
        return lead;
    }
    int length;
    char32_t value;
    char32_t minimum;
    if ((lead & 0xE0) == 0xC0) {
        length = 1, value = lead & 0x1F, minimum = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 2, value = lead & 0x0F, minimum = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 3, value = lead & 0x07, minimum = 0x10000;
    } else {
        return kReplacement;
    }
    for (int i = 0; i < length; ++i) {
        if (pos >= text.size() || !IsContinuation(static_cast<unsigned char>(text[pos]))) {
            return kReplacement;
        }
        value = (value << 6) | (static_cast<unsigned char>(text[pos++]) & 0x3F);
    }
    if (value < minimum || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
        return kReplacement;
    }
    return value;
}

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    size_t pos = 0;
    while (pos < utf8.size()) {
        const char32_t cp = DecodeUtf8(utf8, pos);
        if (cp < 0x10000) {
            out += static_cast<char16_t>(cp);
        } else {
            out += static_cast<char16_t>(0xD800 + ((cp - 0x10000) >> 10));
            out += static_cast<char16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF));
        }
    }
    return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
    std::string out;
    out.reserve(utf16.size());
    for (size_t i = 0; i < utf16.size(); ++i) {
        const char16_t unit = utf16[i];
        char32_t cp = unit;
        if (IsHighSurrogate(unit) && i + 1 < utf16.size() && IsLowSurrogate(utf16[i + 1])) {
            cp = 0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) +
                 (static_cast<char32_t>(utf16[i + 1]) - 0xDC00);
            ++i;
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            cp = kReplacement;
        }
        AppendUtf8(out, cp);
    }
    return out;
}

}  // namespace slib
