// Character styles of styled text: each trait (font, face bits, size, colour) is either
// enabled with a value or disabled, in which case the field's own layout setting applies.
#pragma once

#include <cstdint>

namespace fmhost {

using FontId = uint16_t;
using FaceBits = uint16_t;
using FontSize = uint16_t;

constexpr FontId kInvalidFontId = 0xFFFF;

// Face bits as the host numbers them. Face bits are simply "on" or "off": plain is no bit.
namespace face {
constexpr FaceBits kPlain = 0;
constexpr FaceBits kStrikethrough = 0x0001;
constexpr FaceBits kSmallCaps = 0x0002;
constexpr FaceBits kSuperscript = 0x0004;
constexpr FaceBits kSubscript = 0x0008;
constexpr FaceBits kUppercase = 0x0010;
constexpr FaceBits kLowercase = 0x0020;
constexpr FaceBits kTitlecase = 0x0030;
constexpr FaceBits kWordUnderline = 0x0040;
constexpr FaceBits kDoubleUnderline = 0x0080;
constexpr FaceBits kBold = 0x0100;
constexpr FaceBits kItalic = 0x0200;
constexpr FaceBits kUnderline = 0x0400;
constexpr FaceBits kOutline = 0x0800;
constexpr FaceBits kShadow = 0x1000;
constexpr FaceBits kCondense = 0x2000;
constexpr FaceBits kExtend = 0x4000;
constexpr FaceBits kAllStyles = 0x7FFF;
}  // namespace face

struct Color {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    uint8_t alpha = 255;

    static Color White() { return Color{255, 255, 255, 255}; }
    static Color Black() { return Color{0, 0, 0, 255}; }
    // 8-bit channel widened so that 255 becomes 65535.
    static uint16_t Upsample(uint8_t channel) { return static_cast<uint16_t>(channel * 257); }

    friend bool operator==(const Color& a, const Color& b) {
        return a.red == b.red && a.green == b.green && a.blue == b.blue && a.alpha == b.alpha;
    }
    friend bool operator!=(const Color& a, const Color& b) { return !(a == b); }
};

class CharacterStyle {
  public:
    CharacterStyle() = default;  // every trait disabled
    // Font, face and size enabled; colour enabled too (the host's constructor always sets it).
    CharacterStyle(FontId font, FaceBits faces, FontSize size, Color color = Color::Black());

    void SetFont(FontId font);
    void SetFace(FaceBits faces);  // replaces all face bits
    void SetSize(FontSize size);
    void SetColor(Color color);
    void SetFontInformation(FontId font, FaceBits faces, FontSize size);

    void EnableFont() { fontEnabled_ = true; }
    void EnableFace(FaceBits bits) { faces_ |= bits; }
    void EnableSize() { sizeEnabled_ = true; }
    void EnableColor() { colorEnabled_ = true; }
    void DisableFont() { fontEnabled_ = false; }
    void DisableFace(FaceBits bits) { faces_ &= static_cast<FaceBits>(~bits); }
    void DisableAllFaces() { faces_ = 0; }
    void DisableSize() { sizeEnabled_ = false; }
    void DisableColor() { colorEnabled_ = false; }
    void DisableAll();

    bool IsAllDisabled() const;
    bool IsFontEnabled() const { return fontEnabled_; }
    bool IsFaceEnabled(FaceBits bits) const { return (faces_ & bits) == bits; }
    bool IsAnyFaceEnabled() const { return faces_ != 0; }
    bool IsSizeEnabled() const { return sizeEnabled_; }
    bool IsColorEnabled() const { return colorEnabled_; }

    FontId Font() const { return font_; }
    FaceBits Faces() const { return faces_; }
    FontSize Size() const { return size_; }
    const Color& GetColor() const { return color_; }

    // Disables every trait of this style that `traits` has enabled with the same value
    // (face bits: those set in `traits`).
    void RemoveMatching(const CharacterStyle& traits);
    // Takes over every trait that `overlay` has enabled (face bits are added).
    void Apply(const CharacterStyle& overlay);

    // Equality looks only at enabled traits: a disabled trait's stored value does not matter.
    friend bool operator==(const CharacterStyle& a, const CharacterStyle& b);
    friend bool operator!=(const CharacterStyle& a, const CharacterStyle& b) { return !(a == b); }

  private:
    FontId font_ = 0;
    FaceBits faces_ = 0;
    FontSize size_ = 0;
    Color color_{};
    bool fontEnabled_ = false;
    bool sizeEnabled_ = false;
    bool colorEnabled_ = false;
};

}  // namespace fmhost
