#include "foundation/base64.h"

#include <array>
#include <utility>

#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace slib {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr int8_t kSkip = -2;
constexpr int8_t kInvalid = -1;

const std::array<int8_t, 128>& SextetTable() {
    static const std::array<int8_t, 128> table = [] {
        std::array<int8_t, 128> values{};
        values.fill(kInvalid);
        for (int8_t index = 0; index < 64; ++index) {
            values[static_cast<size_t>(kAlphabet[index])] = index;
        }
        for (const char blank : {' ', '\t', '\r', '\n'}) {
            values[static_cast<size_t>(blank)] = kSkip;
        }
        return values;
    }();
    return table;
}

[[noreturn]] void ThrowNotBase64() {
    Throw(kBadParameter, "Base64 text holds a character outside the Base64 alphabet");
}

}  // namespace

std::string EncodeBase64(const uint8_t* bytes, size_t size) {
    std::string text((size + 2) / 3 * 4, '=');
    char* out = &text[0];
    size_t index = 0;
    for (; index + 3 <= size; index += 3) {
        const uint32_t group =
            uint32_t{bytes[index]} << 16 | uint32_t{bytes[index + 1]} << 8 | bytes[index + 2];
        out[0] = kAlphabet[group >> 18];
        out[1] = kAlphabet[group >> 12 & 63];
        out[2] = kAlphabet[group >> 6 & 63];
        out[3] = kAlphabet[group & 63];
        out += 4;
    }
    if (index < size) {
        const bool two = index + 1 < size;
        const uint32_t group = uint32_t{bytes[index]} << 16 | (two ? bytes[index + 1] << 8 : 0);
        out[0] = kAlphabet[group >> 18];
        out[1] = kAlphabet[group >> 12 & 63];
        if (two) {
            out[2] = kAlphabet[group >> 6 & 63];
        }
    }
    return text;
}

std::vector<uint8_t> DecodeBase64(std::u16string_view text) {
    Base64Decoder decoder(text.size());
    decoder.Feed(text);
    return decoder.Finish();
}

Base64Decoder::Base64Decoder(size_t textUnits) : bytes_(textUnits / 4 * 3 + 3) {}

void Base64Decoder::Feed(std::u16string_view text) {
    const size_t room = text.size() / 4 * 3 + 3;
    if (bytes_.size() - size_ < room) {
        bytes_.resize(size_ + room);  // more text than announced: still correct, only slower
    }
    const std::array<int8_t, 128>& table = SextetTable();
    auto sextet = [&table](char16_t unit) { return unit < 128 ? table[unit] : kInvalid; };
    uint8_t* out = bytes_.data() + size_;
    uint32_t group = group_;
    int sextets = sextets_;
    size_t position = 0;
    const size_t size = text.size();
    while (!padding_ && position < size) {
        // Whole groups of four alphabet characters, the common case, in one step.
        if (sextets == 0 && position + 4 <= size) {
            const int8_t a = sextet(text[position]);
            const int8_t b = sextet(text[position + 1]);
            const int8_t c = sextet(text[position + 2]);
            const int8_t d = sextet(text[position + 3]);
            if ((a | b | c | d) >= 0) {
                const uint32_t whole = static_cast<uint32_t>(a) << 18 |
                                       static_cast<uint32_t>(b) << 12 |
                                       static_cast<uint32_t>(c) << 6 | static_cast<uint32_t>(d);
                out[0] = static_cast<uint8_t>(whole >> 16);
                out[1] = static_cast<uint8_t>(whole >> 8);
                out[2] = static_cast<uint8_t>(whole);
                out += 3;
                position += 4;
                continue;
            }
        }
        const char16_t unit = text[position];
        if (unit == u'=') {
            padding_ = true;
            break;
        }
        const int8_t value = sextet(unit);
        ++position;
        if (value == kSkip) {
            continue;
        }
        if (value == kInvalid) {
            ThrowNotBase64();
        }
        group = group << 6 | static_cast<uint32_t>(value);
        if (++sextets == 4) {
            out[0] = static_cast<uint8_t>(group >> 16);
            out[1] = static_cast<uint8_t>(group >> 8);
            out[2] = static_cast<uint8_t>(group);
            out += 3;
            group = 0;
            sextets = 0;
        }
    }
    for (; position < size; ++position) {
        const int8_t value = text[position] == u'=' ? kSkip : sextet(text[position]);
        if (value == kInvalid) {
            ThrowNotBase64();
        }
        if (value >= 0) {
            // Blocks joined after their padding: other decoders keep the first block and drop
            // the rest without a word, so this refuses rather than guess.
            Throw(kBadParameter, "Base64 text holds padding before the end");
        }
    }
    group_ = group;
    sextets_ = sextets;
    size_ = static_cast<size_t>(out - bytes_.data());
}

std::vector<uint8_t> Base64Decoder::Finish() {
    if (sextets_ == 1) {
        Throw(kBadParameter, "Base64 text ends in the middle of a byte");
    }
    bytes_.resize(size_ + 2);
    if (sextets_ == 2) {
        bytes_[size_++] = static_cast<uint8_t>(group_ >> 4);
    } else if (sextets_ == 3) {
        bytes_[size_++] = static_cast<uint8_t>(group_ >> 10);
        bytes_[size_++] = static_cast<uint8_t>(group_ >> 2);
    }
    sextets_ = 0;
    bytes_.resize(size_);
    return std::move(bytes_);
}

}  // namespace slib
