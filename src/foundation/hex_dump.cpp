#include "foundation/hex_dump.h"

#include <array>

#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace slib {

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";

// Two digits per byte value, built once: one table read per byte is what keeps encoding fast.
const std::array<uint16_t, 256>& DigitPairs() {
    static const std::array<uint16_t, 256> pairs = [] {
        std::array<uint16_t, 256> table{};
        for (size_t value = 0; value < 256; ++value) {
            const unsigned char high = static_cast<unsigned char>(kDigits[value >> 4]);
            const unsigned char low = static_cast<unsigned char>(kDigits[value & 15]);
            table[value] = static_cast<uint16_t>(high | (low << 8));
        }
        return table;
    }();
    return pairs;
}

int DigitValue(char16_t unit) {
    if (unit >= u'0' && unit <= u'9') {
        return unit - u'0';
    }
    if (unit >= u'A' && unit <= u'F') {
        return unit - u'A' + 10;
    }
    if (unit >= u'a' && unit <= u'f') {
        return unit - u'a' + 10;
    }
    return -1;
}

bool IsSeparator(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}

}  // namespace

std::string EncodeHexDump(const uint8_t* bytes, size_t size) {
    if (size == 0) {
        return {};
    }
    const std::array<uint16_t, 256>& pairs = DigitPairs();
    std::string text(size * 3 - 1, ' ');
    char* out = &text[0];
    for (size_t index = 0; index < size; ++index) {
        const uint16_t pair = pairs[bytes[index]];
        out[0] = static_cast<char>(pair & 0xFF);
        out[1] = static_cast<char>(pair >> 8);
        if (index + 1 < size && (index + 1) % 16 == 0) {
            out[2] = '\r';
        }
        out += 3;
    }
    return text;
}

std::vector<uint8_t> DecodeHexDump(std::u16string_view text) {
    std::vector<uint8_t> bytes;
    bytes.reserve(text.size() / 3 + 1);
    int pending = -1;  // the high digit of a pair that waits for its low digit
    for (const char16_t unit : text) {
        const int digit = DigitValue(unit);
        if (digit >= 0) {
            if (pending < 0) {
                pending = digit;
            } else {
                bytes.push_back(static_cast<uint8_t>(pending << 4 | digit));
                pending = -1;
            }
        } else if (!IsSeparator(unit)) {
            Throw(kBadParameter, "Hex-dump text holds a character that is not a hex digit");
        } else if (pending >= 0) {
            Throw(kBadParameter, "Hex-dump text holds a group with an odd number of digits");
        }
    }
    if (pending >= 0) {
        Throw(kBadParameter, "Hex-dump text holds a group with an odd number of digits");
    }
    return bytes;
}

}  // namespace slib
