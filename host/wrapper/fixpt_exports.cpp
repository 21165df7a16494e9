// Fixed-point numbers: exact decimals with a precision (digits kept by division).
#include <algorithm>
#include <limits>

#include "core/calc_errors.h"
#include "guard.h"
#include "objects.h"

using fmhost::Decimal;
using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

Decimal& NumberOf(void* self) {
    return Ref<FmxFixPt>(self).number;
}
const Decimal& NumberOf(const void* self) {
    return Ref<FmxFixPt>(self).number;
}

// The value changes, the precision stays the object's own.
void AssignKeepingPrecision(void* self, Decimal value) {
    Decimal& target = NumberOf(self);
    const int precision = target.Precision();
    target = std::move(value);
    target.SetPrecision(precision);
}

}  // namespace

extern "C" {

FmxFixPt* FM_FixPt_Constructor1(int32_t val, int32_t precision, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::New(FmxFixPt{Decimal(val, precision)}); });
}

FmxFixPt* FM_FixPt_Constructor2(int32_t val, const FmxFixPt& precisionExample, FmxErr& err) {
    return Guard(err, [&] {
        return fmwrapper::New(FmxFixPt{Decimal(val, Ref(precisionExample).number.Precision())});
    });
}

void FM_FixPt_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxFixPt*>(self); });
}

void FM_FixPt_AssignInt(void* self, int32_t that, FmxErr& err) {
    Guard(err, [&] { AssignKeepingPrecision(self, Decimal(that)); });
}

void FM_FixPt_AssignInt64(void* self, int64_t that, FmxErr& err) {
    Guard(err, [&] { AssignKeepingPrecision(self, Decimal(that)); });
}

void FM_FixPt_AssignDouble(void* self, double that, FmxErr& err) {
    Guard(err, [&] { AssignKeepingPrecision(self, Decimal::FromDouble(that)); });
}

void FM_FixPt_AssignFixPt(void* self, const FmxFixPt& that, FmxErr& err) {
    Guard(err, [&] { AssignKeepingPrecision(self, Ref(that).number); });
}

bool FM_FixPt_operatorEQ(const void* self, const FmxFixPt& that, FmxErr& err) {
    return Guard(err, [&] { return NumberOf(self) == Ref(that).number; });
}

bool FM_FixPt_operatorNE(const void* self, const FmxFixPt& that, FmxErr& err) {
    return Guard(err, [&] { return NumberOf(self) != Ref(that).number; });
}

bool FM_FixPt_operatorLT(const void* self, const FmxFixPt& that, FmxErr& err) {
    return Guard(err, [&] { return NumberOf(self) < Ref(that).number; });
}

bool FM_FixPt_operatorLE(const void* self, const FmxFixPt& that, FmxErr& err) {
    return Guard(err, [&] { return NumberOf(self) <= Ref(that).number; });
}

bool FM_FixPt_operatorGT(const void* self, const FmxFixPt& that, FmxErr& err) {
    return Guard(err, [&] { return NumberOf(self) > Ref(that).number; });
}

bool FM_FixPt_operatorGE(const void* self, const FmxFixPt& that, FmxErr& err) {
    return Guard(err, [&] { return NumberOf(self) >= Ref(that).number; });
}

void FM_FixPt_Increment(void* self, int32_t n, FmxErr& err) {
    Guard(err, [&] { AssignKeepingPrecision(self, NumberOf(self) + Decimal(n)); });
}

void FM_FixPt_Increment64(void* self, int64_t n, FmxErr& err) {
    Guard(err, [&] { AssignKeepingPrecision(self, NumberOf(self) + Decimal(n)); });
}

void FM_FixPt_Decrement(void* self, int32_t n, FmxErr& err) {
    Guard(err, [&] { AssignKeepingPrecision(self, NumberOf(self) - Decimal(n)); });
}

void FM_FixPt_Decrement64(void* self, int64_t n, FmxErr& err) {
    Guard(err, [&] { AssignKeepingPrecision(self, NumberOf(self) - Decimal(n)); });
}

void FM_FixPt_Negate(void* self, FmxErr& err) {
    Guard(err, [&] { AssignKeepingPrecision(self, -NumberOf(self)); });
}

int32_t FM_FixPt_GetPrecision(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int32_t>(NumberOf(self).Precision()); });
}

void FM_FixPt_SetPrecision(void* self, int32_t precision, FmxErr& err) {
    Guard(err, [&] { NumberOf(self).SetPrecision(precision); });
}

void FM_FixPt_Add(const void* self, const FmxFixPt& arg, FmxFixPt& result, FmxErr& err) {
    Guard(err, [&] { Ref(result).number = NumberOf(self) + Ref(arg).number; });
}

void FM_FixPt_Subtract(const void* self, const FmxFixPt& arg, FmxFixPt& result, FmxErr& err) {
    Guard(err, [&] { Ref(result).number = NumberOf(self) - Ref(arg).number; });
}

void FM_FixPt_Multiply(const void* self, const FmxFixPt& arg, FmxFixPt& result, FmxErr& err) {
    Guard(err, [&] { Ref(result).number = NumberOf(self) * Ref(arg).number; });
}

// Division by zero (or by "?") leaves `result` alone and reports the calculation error.
FmxErrcode FM_FixPt_Divide(const void* self, const FmxFixPt& arg, FmxFixPt& result, FmxErr& err) {
    return Guard(err, [&]() -> FmxErrcode {
        const Decimal quotient = NumberOf(self) / Ref(arg).number;
        if (!quotient.IsValid())
            return fmhost::kErrCalcGeneric;
        Ref(result).number = quotient;
        return 0;
    });
}

bool FM_FixPt_AsBool(const void* self, FmxErr& err) {
    return Guard(err, [&] {
        const Decimal& number = NumberOf(self);
        return number.IsValid() && !number.IsZero();
    });
}

// Toward zero, saturating at the type's range.
int32_t FM_FixPt_AsLong(const void* self, FmxErr& err) {
    return Guard(err, [&] {
        const int64_t wide = NumberOf(self).ToInt64();
        return static_cast<int32_t>(std::clamp<int64_t>(wide, std::numeric_limits<int32_t>::min(),
                                                        std::numeric_limits<int32_t>::max()));
    });
}

int64_t FM_FixPt_AsLong64(const void* self, FmxErr& err) {
    return Guard(err, [&] { return NumberOf(self).ToInt64(); });
}

double FM_FixPt_AsFloat(const void* self, FmxErr& err) {
    return Guard(err, [&] { return NumberOf(self).ToDouble(); });
}

}  // extern "C"
