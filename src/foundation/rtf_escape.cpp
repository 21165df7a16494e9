#include "foundation/rtf_escape.h"

#include <cstdint>

#include "foundation/text_detection.h"

namespace slib {

namespace {

void AppendUnit(std::string& out, uint32_t unit) {
    out += "\\u";
    out += std::to_string(static_cast<int16_t>(static_cast<uint16_t>(unit)));
    out += '?';
}

size_t SequenceLength(uint8_t lead) {
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return 4;
    }
    return 0;
}

}  // namespace

std::string EscapeRtfNonAscii(std::string_view rtf) {
    static const char kHex[] = "0123456789abcdef";
    std::string out;
    out.reserve(rtf.size());
    const auto* bytes = reinterpret_cast<const uint8_t*>(rtf.data());
    size_t index = 0;
    while (index < rtf.size()) {
        const uint8_t lead = bytes[index];
        if (lead < 0x80) {
            out += static_cast<char>(lead);
            ++index;
            continue;
        }
        const size_t length = SequenceLength(lead);
        if (length == 0 || index + length > rtf.size() || !IsValidUtf8(bytes + index, length)) {
            out += "\\'";
            out += kHex[lead >> 4];
            out += kHex[lead & 15];
            ++index;
            continue;
        }
        uint32_t point = lead & (0x7F >> length);
        for (size_t offset = 1; offset < length; ++offset) {
            point = point << 6 | (bytes[index + offset] & 0x3F);
        }
        if (point > 0xFFFF) {
            point -= 0x10000;
            AppendUnit(out, 0xD800 + (point >> 10));
            AppendUnit(out, 0xDC00 + (point & 0x3FF));
        } else {
            AppendUnit(out, point);
        }
        index += length;
    }
    return out;
}

std::string StandardRtfOpening(std::string rtf) {
    static const std::string kUtf8Opening = "{\\urtf";
    if (rtf.compare(0, kUtf8Opening.size(), kUtf8Opening) != 0) {
        return rtf;
    }
    size_t end = kUtf8Opening.size();
    while (end < rtf.size() && rtf[end] >= '0' && rtf[end] <= '9') {
        ++end;
    }
    return "{\\rtf1" + rtf.substr(end);
}

}  // namespace slib
