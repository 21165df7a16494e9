// Colours of character styles. White and black are shared host-owned objects.
#include "guard.h"
#include "objects.h"

using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

fmhost::Color& ColorOf(void* self) {
    return Ref<FmxColor>(self).color;
}
const fmhost::Color& ColorOf(const void* self) {
    return Ref<FmxColor>(self).color;
}

}  // namespace

extern "C" {

FmxColor* FM_Color_Constructor1(FmxErr& err) {
    return Guard(err, [] { return fmwrapper::New(FmxColor{fmhost::Color::Black()}); });
}

FmxColor* FM_Color_Constructor2(uint8_t red, uint8_t green, uint8_t blue, uint8_t alpha,
                                FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::New(FmxColor{{red, green, blue, alpha}}); });
}

FmxColor* FM_Color_Constructor3(const FmxColor& color, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::New(Ref(color)); });
}

void FM_Color_SetRed(void* self, uint8_t r, FmxErr& err) {
    Guard(err, [&] { ColorOf(self).red = r; });
}

void FM_Color_SetGreen(void* self, uint8_t g, FmxErr& err) {
    Guard(err, [&] { ColorOf(self).green = g; });
}

void FM_Color_SetBlue(void* self, uint8_t b, FmxErr& err) {
    Guard(err, [&] { ColorOf(self).blue = b; });
}

void FM_Color_SetAlpha(void* self, uint8_t a, FmxErr& err) {
    Guard(err, [&] { ColorOf(self).alpha = a; });
}

uint8_t FM_Color_GetRed(const void* self, FmxErr& err) {
    return Guard(err, [&] { return ColorOf(self).red; });
}

uint8_t FM_Color_GetGreen(const void* self, FmxErr& err) {
    return Guard(err, [&] { return ColorOf(self).green; });
}

uint8_t FM_Color_GetBlue(const void* self, FmxErr& err) {
    return Guard(err, [&] { return ColorOf(self).blue; });
}

uint8_t FM_Color_GetAlpha(const void* self, FmxErr& err) {
    return Guard(err, [&] { return ColorOf(self).alpha; });
}

uint16_t FM_Color_GetRedUpsample(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmhost::Color::Upsample(ColorOf(self).red); });
}

uint16_t FM_Color_GetGreenUpsample(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmhost::Color::Upsample(ColorOf(self).green); });
}

uint16_t FM_Color_GetBlueUpsample(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmhost::Color::Upsample(ColorOf(self).blue); });
}

uint16_t FM_Color_GetAlphaUpsample(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmhost::Color::Upsample(ColorOf(self).alpha); });
}

FmxColor* FM_Color_operatorAS(void* self, const FmxColor& rhs, FmxErr& err) {
    return Guard(err, [&] {
        FmxColor& target = Ref<FmxColor>(self);
        target.color = Ref(rhs).color;
        return &target;
    });
}

bool FM_Color_operatorEQ(const void* self, const FmxColor& rhs, FmxErr& err) {
    return Guard(err, [&] { return ColorOf(self) == Ref(rhs).color; });
}

bool FM_Color_operatorNE(const void* self, const FmxColor& rhs, FmxErr& err) {
    return Guard(err, [&] { return ColorOf(self) != Ref(rhs).color; });
}

// No error slot: these cannot fail, the objects exist for the life of the process.
const FmxColor* FM_Color_White() {
    static const FmxColor white{fmhost::Color::White()};
    return &white;
}

const FmxColor* FM_Color_Black() {
    static const FmxColor black{fmhost::Color::Black()};
    return &black;
}

void FM_Color_Delete(void* self, FmxErr& err) {
    Guard(err, [&] {
        // The shared colours are not the caller's to free: refuse instead of corrupting them.
        if (self == FM_Color_White() || self == FM_Color_Black()) {
            throw std::invalid_argument("shared colour");
        }
        delete static_cast<FmxColor*>(self);
    });
}

}  // extern "C"
