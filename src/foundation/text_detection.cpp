#include "foundation/text_detection.h"

namespace slib {

ByteOrderMark DetectByteOrderMark(const uint8_t* bytes, size_t size) {
    if (size >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF) {
        return ByteOrderMark::kUtf8;
    }
    if (size >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE) {
        return ByteOrderMark::kUtf16LittleEndian;
    }
    if (size >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF) {
        return ByteOrderMark::kUtf16BigEndian;
    }
    return ByteOrderMark::kNone;
}

size_t ByteOrderMarkLength(ByteOrderMark mark) {
    switch (mark) {
        case ByteOrderMark::kUtf8:
            return 3;
        case ByteOrderMark::kUtf16LittleEndian:
        case ByteOrderMark::kUtf16BigEndian:
            return 2;
        case ByteOrderMark::kNone:
            break;
    }
    return 0;
}

bool IsValidUtf8(const uint8_t* bytes, size_t size, bool mayBeCutShort) {
    size_t index = 0;
    while (index < size) {
        const uint8_t lead = bytes[index];
        if (lead < 0x80) {
            ++index;
            continue;
        }
        size_t length;
        uint8_t low = 0x80;   // bounds of the first continuation byte, which rule out overlong
        uint8_t high = 0xBF;  // forms, surrogates and values beyond U+10FFFF
        if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
            low = lead == 0xE0 ? 0xA0 : 0x80;
            high = lead == 0xED ? 0x9F : 0xBF;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
            low = lead == 0xF0 ? 0x90 : 0x80;
            high = lead == 0xF4 ? 0x8F : 0xBF;
        } else {
            return false;
        }
        for (size_t offset = 1; offset < length; ++offset) {
            if (index + offset >= size) {
                return mayBeCutShort;
            }
            const uint8_t next = bytes[index + offset];
            const uint8_t min = offset == 1 ? low : 0x80;
            const uint8_t max = offset == 1 ? high : 0xBF;
            if (next < min || next > max) {
                return false;
            }
        }
        index += length;
    }
    return true;
}

bool LooksLikeText(const uint8_t* bytes, size_t size) {
    for (size_t index = 0; index < size; ++index) {
        const uint8_t byte = bytes[index];
        if (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\f' && byte != '\r' &&
            byte != 0x1B) {
            return false;
        }
    }
    return true;
}

}  // namespace slib
