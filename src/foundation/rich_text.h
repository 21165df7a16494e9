#pragma once
// Text with character formats in the host's terms: the neutral form between host styled text and
// any RTF engine (the system's control on Windows, our own reader and writer elsewhere).

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace slib {

// The host's face bits; the values are the host's own, so they pass through unchanged.
namespace face {
constexpr uint16_t kStrikethrough = 0x0001;
constexpr uint16_t kSmallCaps = 0x0002;
constexpr uint16_t kSuperscript = 0x0004;
constexpr uint16_t kSubscript = 0x0008;
constexpr uint16_t kUppercase = 0x0010;
constexpr uint16_t kTitlecase = 0x0030;  // shares the upper-case bit
constexpr uint16_t kWordUnderline = 0x0040;
constexpr uint16_t kDoubleUnderline = 0x0080;
constexpr uint16_t kBold = 0x0100;
constexpr uint16_t kItalic = 0x0200;
constexpr uint16_t kUnderline = 0x0400;
}  // namespace face

struct RichFormat {
    std::u16string font;  // empty: not set
    uint16_t size = 0;    // points; 0: not set
    bool hasColor = false;
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    uint16_t face = 0;

    bool operator==(const RichFormat& other) const;
    bool operator!=(const RichFormat& other) const { return !(*this == other); }
};

// The code units [start, end) in one format.
struct RichRun {
    size_t start;
    size_t end;
    RichFormat format;
};

// Runs are in order and do not overlap; text outside every run has no format of its own.
struct RichText {
    std::u16string text;
    std::vector<RichRun> runs;
};

}  // namespace slib
