// Four-character codes.
#include "guard.h"
#include "objects.h"

using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

const fmhost::TypeCode& Code(const void* self) {
    return Ref<FmxQuadChar>(self).code;
}

uint8_t CharAt(const void* self, int32_t i) {
    if (i < 0 || i > 3)
        throw std::out_of_range("four-character code index");
    return static_cast<uint8_t>(Code(self).At(i));
}

}  // namespace

extern "C" {

FmxQuadChar* FM_QuadChar_Constructor1(FmxErr& err) {
    return Guard(err, [] { return fmwrapper::New(FmxQuadChar{}); });
}

FmxQuadChar* FM_QuadChar_Constructor2(char c0, char c1, char c2, char c3, FmxErr& err) {
    return Guard(err,
                 [&] { return fmwrapper::New(FmxQuadChar{fmhost::TypeCode(c0, c1, c2, c3)}); });
}

FmxQuadChar* FM_QuadChar_Constructor3(const FmxQuadChar& value, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::New(Ref(value)); });
}

const FmxQuadChar* FM_QuadChar_operatorAS(void* self, const FmxQuadChar& value, FmxErr& err) {
    return Guard(err, [&] {
        FmxQuadChar& target = Ref<FmxQuadChar>(self);
        target.code = Ref(value).code;
        return &target;
    });
}

uint8_t FM_QuadChar_operatorAR(void* self, int32_t i, FmxErr& err) {
    return Guard(err, [&] { return CharAt(self, i); });
}

uint8_t FM_QuadChar_operatorCAR(const void* self, int32_t i, FmxErr& err) {
    return Guard(err, [&] { return CharAt(self, i); });
}

bool FM_QuadChar_operatorEQ(const void* self, const FmxQuadChar& value, FmxErr& err) {
    return Guard(err, [&] { return Code(self) == Ref(value).code; });
}

bool FM_QuadChar_operatorNE(const void* self, const FmxQuadChar& value, FmxErr& err) {
    return Guard(err, [&] { return Code(self) != Ref(value).code; });
}

bool FM_QuadChar_operatorLT(const void* self, const FmxQuadChar& value, FmxErr& err) {
    return Guard(err, [&] { return Code(self) < Ref(value).code; });
}

bool FM_QuadChar_operatorLE(const void* self, const FmxQuadChar& value, FmxErr& err) {
    return Guard(err, [&] { return !(Ref(value).code < Code(self)); });
}

bool FM_QuadChar_operatorGT(const void* self, const FmxQuadChar& value, FmxErr& err) {
    return Guard(err, [&] { return Ref(value).code < Code(self); });
}

bool FM_QuadChar_operatorGE(const void* self, const FmxQuadChar& value, FmxErr& err) {
    return Guard(err, [&] { return !(Code(self) < Ref(value).code); });
}

uint32_t FM_QuadChar_GetMacType(const void* self, FmxErr& err) {
    return Guard(err, [&] { return Code(self).AsMacType(); });
}

void FM_QuadChar_SetMacType(void* self, uint32_t value, FmxErr& err) {
    Guard(err, [&] { Ref<FmxQuadChar>(self).code = fmhost::TypeCode::FromMacType(value); });
}

void FM_QuadChar_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxQuadChar*>(self); });
}

}  // extern "C"
