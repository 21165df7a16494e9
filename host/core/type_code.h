// A four-character stream type code such as 'FNAM' or 'PDF ' (note the blank).
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace fmhost {

class TypeCode {
  public:
    constexpr TypeCode() = default;  // four zero bytes
    constexpr TypeCode(char c0, char c1, char c2, char c3) : chars_{c0, c1, c2, c3} {}
    // From a four-character string literal: TypeCode::Of("FNAM").
    static constexpr TypeCode Of(const char (&s)[5]) { return TypeCode(s[0], s[1], s[2], s[3]); }

    // First character in the high byte: 'FNAM' is 0x464E414D.
    constexpr uint32_t AsMacType() const {
        return (uint32_t(uint8_t(chars_[0])) << 24) | (uint32_t(uint8_t(chars_[1])) << 16) |
               (uint32_t(uint8_t(chars_[2])) << 8) | uint32_t(uint8_t(chars_[3]));
    }
    static constexpr TypeCode FromMacType(uint32_t value) {
        return TypeCode(char(value >> 24), char(value >> 16), char(value >> 8), char(value));
    }

    char At(int i) const { return (i >= 0 && i < 4) ? chars_[static_cast<size_t>(i)] : '\0'; }
    std::string ToString() const { return std::string(chars_.data(), 4); }

    friend constexpr bool operator==(TypeCode a, TypeCode b) {
        return a.AsMacType() == b.AsMacType();
    }
    friend constexpr bool operator!=(TypeCode a, TypeCode b) { return !(a == b); }
    friend constexpr bool operator<(TypeCode a, TypeCode b) {
        return a.AsMacType() < b.AsMacType();
    }

  private:
    std::array<char, 4> chars_{};
};

namespace stream_type {
constexpr TypeCode kFileName = TypeCode::Of("FNAM");
constexpr TypeCode kPictureSize = TypeCode::Of("SIZE");
constexpr TypeCode kFile = TypeCode::Of("FILE");
constexpr TypeCode kJpeg = TypeCode::Of("JPEG");
constexpr TypeCode kGif = TypeCode::Of("GIFf");
constexpr TypeCode kPng = TypeCode::Of("PNGf");
constexpr TypeCode kBmp = TypeCode::Of("BMPf");
constexpr TypeCode kPdf = TypeCode::Of("PDF ");
constexpr TypeCode kTiff = TypeCode::Of("TIFF");
constexpr TypeCode kZlib = TypeCode::Of("ZLIB");
constexpr TypeCode kMain = TypeCode::Of("MAIN");
}  // namespace stream_type

}  // namespace fmhost
