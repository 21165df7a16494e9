#include "core/base64.h"

namespace fmhost {
namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr size_t kLineLength = 76;

int DigitValue(char16_t c) {
    if (c >= u'A' && c <= u'Z')
        return c - u'A';
    if (c >= u'a' && c <= u'z')
        return c - u'a' + 26;
    if (c >= u'0' && c <= u'9')
        return c - u'0' + 52;
    if (c == u'+')
        return 62;
    if (c == u'/')
        return 63;
    return -1;
}

bool IsSpace(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

}  // namespace

std::u16string Base64Encode(const uint8_t* bytes, size_t size) {
    std::u16string plain;
    plain.reserve((size + 2) / 3 * 4);
    for (size_t i = 0; i < size; i += 3) {
        const uint32_t b0 = bytes[i];
        const uint32_t b1 = i + 1 < size ? bytes[i + 1] : 0;
        const uint32_t b2 = i + 2 < size ? bytes[i + 2] : 0;
        const uint32_t group = (b0 << 16) | (b1 << 8) | b2;
        plain.push_back(kAlphabet[(group >> 18) & 63]);
        plain.push_back(kAlphabet[(group >> 12) & 63]);
        plain.push_back(i + 1 < size ? kAlphabet[(group >> 6) & 63] : '=');
        plain.push_back(i + 2 < size ? kAlphabet[group & 63] : '=');
    }
    std::u16string out;
    out.reserve(plain.size() + plain.size() / kLineLength * 2);
    for (size_t i = 0; i < plain.size(); i += kLineLength) {
        if (i > 0)
            out += u"\r\n";
        out.append(plain, i, kLineLength);
    }
    return out;
}

std::optional<std::vector<uint8_t>> Base64Decode(std::u16string_view text) {
    std::vector<uint8_t> out;
    uint32_t group = 0;
    int count = 0;
    int padding = 0;
    for (char16_t c : text) {
        if (IsSpace(c))
            continue;
        if (c == u'=') {
            ++padding;
            continue;
        }
        const int value = DigitValue(c);
        if (value < 0 || padding > 0)
            return std::nullopt;  // foreign char, or data after "="
        group = (group << 6) | static_cast<uint32_t>(value);
        if (++count == 4) {
            out.push_back(static_cast<uint8_t>(group >> 16));
            out.push_back(static_cast<uint8_t>(group >> 8));
            out.push_back(static_cast<uint8_t>(group));
            group = 0;
            count = 0;
        }
    }
    if (count == 1 || padding > 2)
        return std::nullopt;
    if (count == 2) {
        out.push_back(static_cast<uint8_t>(group >> 4));
    } else if (count == 3) {
        out.push_back(static_cast<uint8_t>(group >> 10));
        out.push_back(static_cast<uint8_t>(group >> 2));
    }
    return out;
}

}  // namespace fmhost
