#include "core/character_style.h"

namespace fmhost {

CharacterStyle::CharacterStyle(FontId font, FaceBits faces, FontSize size, Color color)
    : font_(font),
      faces_(faces),
      size_(size),
      color_(color),
      fontEnabled_(true),
      sizeEnabled_(true),
      colorEnabled_(true) {}

void CharacterStyle::SetFont(FontId font) {
    font_ = font;
    fontEnabled_ = true;
}

void CharacterStyle::SetFace(FaceBits faces) {
    faces_ = faces;
}

void CharacterStyle::SetSize(FontSize size) {
    size_ = size;
    sizeEnabled_ = true;
}

void CharacterStyle::SetColor(Color color) {
    color_ = color;
    colorEnabled_ = true;
}

void CharacterStyle::SetFontInformation(FontId font, FaceBits faces, FontSize size) {
    SetFont(font);
    SetFace(faces);
    SetSize(size);
}

void CharacterStyle::DisableAll() {
    fontEnabled_ = sizeEnabled_ = colorEnabled_ = false;
    faces_ = 0;
}

bool CharacterStyle::IsAllDisabled() const {
    return !fontEnabled_ && !sizeEnabled_ && !colorEnabled_ && faces_ == 0;
}

void CharacterStyle::RemoveMatching(const CharacterStyle& traits) {
    if (traits.fontEnabled_ && fontEnabled_ && font_ == traits.font_)
        fontEnabled_ = false;
    if (traits.sizeEnabled_ && sizeEnabled_ && size_ == traits.size_)
        sizeEnabled_ = false;
    if (traits.colorEnabled_ && colorEnabled_ && color_ == traits.color_)
        colorEnabled_ = false;
    DisableFace(traits.faces_);
}

void CharacterStyle::Apply(const CharacterStyle& overlay) {
    if (overlay.fontEnabled_)
        SetFont(overlay.font_);
    if (overlay.sizeEnabled_)
        SetSize(overlay.size_);
    if (overlay.colorEnabled_)
        SetColor(overlay.color_);
    EnableFace(overlay.faces_);
}

bool operator==(const CharacterStyle& a, const CharacterStyle& b) {
    if (a.fontEnabled_ != b.fontEnabled_ || a.sizeEnabled_ != b.sizeEnabled_ ||
        a.colorEnabled_ != b.colorEnabled_ || a.faces_ != b.faces_) {
        return false;
    }
    return (!a.fontEnabled_ || a.font_ == b.font_) && (!a.sizeEnabled_ || a.size_ == b.size_) &&
           (!a.colorEnabled_ || a.color_ == b.color_);
}

}  // namespace fmhost
