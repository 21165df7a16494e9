// Character styles: font, face bits, size and colour, each enabled or not.
#include "guard.h"
#include "objects.h"

using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

fmhost::CharacterStyle& StyleOf(void* self) {
    return Ref<FmxCharacterStyle>(self).style;
}
const fmhost::CharacterStyle& StyleOf(const void* self) {
    return Ref<FmxCharacterStyle>(self).style;
}

FmxCharacterStyle* NewStyle(const fmhost::CharacterStyle& style) {
    auto* created = new FmxCharacterStyle;
    created->style = style;
    return created;
}

}  // namespace

extern "C" {

FmxCharacterStyle* FM_CharacterStyle_Constructor1(FmxErr& err) {
    return Guard(err, [] { return NewStyle(fmhost::CharacterStyle()); });
}

FmxCharacterStyle* FM_CharacterStyle_Constructor2(uint16_t font, uint16_t face, uint16_t size,
                                                  const FmxColor& color, FmxErr& err) {
    return Guard(
        err, [&] { return NewStyle(fmhost::CharacterStyle(font, face, size, Ref(color).color)); });
}

FmxCharacterStyle* FM_CharacterStyle_Constructor3(const FmxCharacterStyle& style, FmxErr& err) {
    return Guard(err, [&] { return NewStyle(Ref(style).style); });
}

void FM_CharacterStyle_EnableFont(void* self, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).EnableFont(); });
}

void FM_CharacterStyle_EnableFace(void* self, uint16_t face, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).EnableFace(face); });
}

void FM_CharacterStyle_EnableSize(void* self, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).EnableSize(); });
}

void FM_CharacterStyle_EnableColor(void* self, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).EnableColor(); });
}

void FM_CharacterStyle_DisableFont(void* self, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).DisableFont(); });
}

void FM_CharacterStyle_DisableFace(void* self, uint16_t face, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).DisableFace(face); });
}

void FM_CharacterStyle_DisableAllFaces(void* self, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).DisableAllFaces(); });
}

void FM_CharacterStyle_DisableSize(void* self, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).DisableSize(); });
}

void FM_CharacterStyle_DisableColor(void* self, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).DisableColor(); });
}

void FM_CharacterStyle_DisableAll(void* self, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).DisableAll(); });
}

bool FM_CharacterStyle_IsAllDisabled(const void* self, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self).IsAllDisabled(); });
}

bool FM_CharacterStyle_IsFontEnabled(const void* self, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self).IsFontEnabled(); });
}

bool FM_CharacterStyle_IsFaceEnabled(const void* self, uint16_t face, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self).IsFaceEnabled(face); });
}

bool FM_CharacterStyle_IsAnyFaceEnabled(const void* self, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self).IsAnyFaceEnabled(); });
}

bool FM_CharacterStyle_IsSizeEnabled(const void* self, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self).IsSizeEnabled(); });
}

bool FM_CharacterStyle_IsColorEnabled(const void* self, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self).IsColorEnabled(); });
}

void FM_CharacterStyle_SetFontInformation(void* self, uint16_t font, uint16_t face, uint16_t size,
                                          FmxErr& err) {
    Guard(err, [&] { StyleOf(self).SetFontInformation(font, face, size); });
}

void FM_CharacterStyle_GetFontInformation(void* self, uint16_t& font, uint16_t& face,
                                          uint16_t& size, FmxErr& err) {
    Guard(err, [&] {
        const fmhost::CharacterStyle& style = StyleOf(self);
        Ref(font) = style.Font();
        Ref(face) = style.Faces();
        Ref(size) = style.Size();
    });
}

void FM_CharacterStyle_SetFont(void* self, uint16_t font, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).SetFont(font); });
}

void FM_CharacterStyle_SetFace(void* self, uint16_t face, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).SetFace(face); });
}

void FM_CharacterStyle_SetSize(void* self, uint16_t size, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).SetSize(size); });
}

uint16_t FM_CharacterStyle_GetFont(const void* self, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self).Font(); });
}

uint16_t FM_CharacterStyle_GetFace(const void* self, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self).Faces(); });
}

uint16_t FM_CharacterStyle_GetSize(const void* self, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self).Size(); });
}

void FM_CharacterStyle_SetColor(void* self, const FmxColor& color, FmxErr& err) {
    Guard(err, [&] { StyleOf(self).SetColor(Ref(color).color); });
}

// Lent out: a colour object kept inside the style, brought up to date on every call.
const FmxColor* FM_CharacterStyle_GetColor(const void* self, FmxErr& err) {
    return Guard(err, [&] {
        auto& owner = const_cast<FmxCharacterStyle&>(Ref<FmxCharacterStyle>(self));
        owner.colorView.color = owner.style.GetColor();
        return static_cast<const FmxColor*>(&owner.colorView);
    });
}

FmxCharacterStyle* FM_CharacterStyle_operatorAS(void* self, const FmxCharacterStyle& rhs,
                                                FmxErr& err) {
    return Guard(err, [&] {
        FmxCharacterStyle& target = Ref<FmxCharacterStyle>(self);
        target.style = Ref(rhs).style;
        return &target;
    });
}

bool FM_CharacterStyle_operatorEQ(const void* self, const FmxCharacterStyle& rhs, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self) == Ref(rhs).style; });
}

bool FM_CharacterStyle_operatorNE(const void* self, const FmxCharacterStyle& rhs, FmxErr& err) {
    return Guard(err, [&] { return StyleOf(self) != Ref(rhs).style; });
}

void FM_CharacterStyle_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxCharacterStyle*>(self); });
}

}  // extern "C"
