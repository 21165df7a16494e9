#include "foundation/file_name_bytes.h"

#include "foundation/utf_conversion.h"

namespace slib {

namespace {

constexpr char16_t kEscapeBase = 0xDC00;  // + a byte from 0x80 to 0xFF

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The length of the well-formed UTF-8 sequence at `pos`, or 0 when it is not one.
size_t WellFormedLength(std::string_view bytes, size_t pos) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = byte(pos);
    size_t length;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead < 0x80) {
        return 1;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;   // no overlong forms
        high = lead == 0xED ? 0x9F : 0xBF;  // no surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;  // nothing past U+10FFFF
    } else {
        return 0;
    }
    if (pos + length > bytes.size() || byte(pos + 1) < low || byte(pos + 1) > high) {
        return 0;
    }
    for (size_t i = 2; i < length; ++i) {
        if ((byte(pos + i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

}  // namespace

std::u16string FileNameBytesToText(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    size_t pos = 0;
    while (pos < bytes.size()) {
        const size_t length = WellFormedLength(bytes, pos);
        if (length == 0) {
            text += static_cast<char16_t>(kEscapeBase + static_cast<unsigned char>(bytes[pos]));
            ++pos;
            continue;
        }
        text += Utf8ToUtf16(bytes.substr(pos, length));
        pos += length;
    }
    return text;
}

std::optional<std::string> TextToFileNameBytes(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    size_t start = 0;  // the pending stretch of ordinary text
    for (size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit == 0) {
            return std::nullopt;
        }
        if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            ++i;
            continue;
        }
        if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit)) {
            continue;
        }
        if (unit < kEscapeBase + 0x80 || unit > kEscapeBase + 0xFF) {
            return std::nullopt;
        }
        bytes += Utf16ToUtf8(text.substr(start, i - start));
        bytes += static_cast<char>(unit - kEscapeBase);
        start = i + 1;
    }
    bytes += Utf16ToUtf8(text.substr(start));
    return bytes;
}

}  // namespace slib
