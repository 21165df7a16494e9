#include "foundation/hex_dump.h"

#include <array>
#include <cstring>
#include <utility>

#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace slib {

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";
constexpr uint8_t kSeparator = 16;
constexpr uint8_t kForeign = 255;

// "XY " for every byte value, four bytes apart so one aligned copy writes a group.
const std::array<std::array<char, 4>, 256>& Groups() {
    static const std::array<std::array<char, 4>, 256> groups = [] {
        std::array<std::array<char, 4>, 256> table{};
        for (size_t value = 0; value < 256; ++value) {
            table[value] = {kDigits[value >> 4], kDigits[value & 15], ' ', ' '};
        }
        return table;
    }();
    return groups;
}

// Digit values 0..15, kSeparator for blanks and line breaks, kForeign for the rest, for every
// UTF-16 unit: one table read per unit and no range test keep decoding fast.
const std::array<uint8_t, 65536>& Classes() {
    static const std::array<uint8_t, 65536> classes = [] {
        std::array<uint8_t, 65536> table{};
        table.fill(kForeign);
        for (uint8_t digit = 0; digit < 16; ++digit) {
            table[static_cast<size_t>(kDigits[digit])] = digit;
            table[static_cast<size_t>("0123456789abcdef"[digit])] = digit;
        }
        for (const char blank : {' ', '\t', '\r', '\n'}) {
            table[static_cast<size_t>(blank)] = kSeparator;
        }
        return table;
    }();
    return classes;
}

[[noreturn]] void ThrowOdd() {
    Throw(kBadParameter, "Hex-dump text holds a group with an odd number of digits");
}

[[noreturn]] void ThrowForeign() {
    Throw(kBadParameter, "Hex-dump text holds a character that is not a hex digit");
}

}  // namespace

std::string EncodeHexDump(const uint8_t* bytes, size_t size) {
    if (size == 0) {
        return {};
    }
    const auto& groups = Groups();
    // Each group is copied as four bytes (one store), the fourth overwritten by the next group;
    // hence one spare byte at the end.
    std::string text(size * 3 + 1, ' ');
    char* out = &text[0];
    size_t index = 0;
    for (; index + 16 <= size; index += 16) {
        for (size_t column = 0; column < 16; ++column) {
            std::memcpy(out, groups[bytes[index + column]].data(), 4);
            out += 3;
        }
        out[-1] = '\r';
    }
    for (; index < size; ++index) {
        std::memcpy(out, groups[bytes[index]].data(), 4);
        out += 3;
    }
    text.resize(size * 3 - 1);
    return text;
}

std::vector<uint8_t> DecodeHexDump(std::u16string_view text) {
    HexDumpDecoder decoder(text.size());
    decoder.Feed(text);
    return decoder.Finish();
}

HexDumpDecoder::HexDumpDecoder(size_t textUnits) : bytes_(textUnits / 2 + 1) {}

void HexDumpDecoder::Feed(std::u16string_view text) {
    const size_t room = text.size() / 2 + 1;
    if (bytes_.size() - size_ < room) {
        bytes_.resize(size_ + room);  // more text than announced: still correct, only slower
    }
    const std::array<uint8_t, 65536>& classes = Classes();
    uint8_t* out = bytes_.data() + size_;
    const char16_t* unit = text.data();
    const char16_t* const end = unit + text.size();
    if (pendingHigh_ >= 0 && unit < end) {
        const uint8_t low = classes[*unit++];
        if (low >= kSeparator) {
            if (low == kSeparator) {
                ThrowOdd();
            }
            ThrowForeign();
        }
        *out++ = static_cast<uint8_t>(pendingHigh_ << 4 | low);
        pendingHigh_ = -1;
    }
    while (unit < end) {
        // The common case: a group of two digits and the separator after it.
        while (end - unit >= 3) {
            const uint8_t high = classes[unit[0]];
            const uint8_t low = classes[unit[1]];
            if ((high | low) >= kSeparator || classes[unit[2]] != kSeparator) {
                break;
            }
            *out++ = static_cast<uint8_t>(high << 4 | low);
            unit += 3;
        }
        if (unit == end) {
            break;
        }
        // Anything else, one separator or one pair at a time.
        const uint8_t high = classes[*unit];
        if (high == kSeparator) {
            ++unit;
            continue;
        }
        if (high == kForeign) {
            ThrowForeign();
        }
        if (unit + 1 == end) {
            pendingHigh_ = high;
            break;
        }
        const uint8_t low = classes[unit[1]];
        if (low >= kSeparator) {
            if (low == kSeparator) {
                ThrowOdd();
            }
            ThrowForeign();
        }
        *out++ = static_cast<uint8_t>(high << 4 | low);
        unit += 2;
    }
    size_ = static_cast<size_t>(out - bytes_.data());
}

std::vector<uint8_t> HexDumpDecoder::Finish() {
    if (pendingHigh_ >= 0) {
        ThrowOdd();
    }
    bytes_.resize(size_);
    return std::move(bytes_);
}

}  // namespace slib
