// Typed values (the host's Data). Getters lend out views kept inside the value object.
#include "core/calc_errors.h"
#include "core/session.h"
#include "data_views.h"
#include "environment.h"
#include "guard.h"
#include "objects.h"

using fmhost::NativeType;
using fmhost::Value;
using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

FmxData& DataOf(void* self) {
    return Ref<FmxData>(self);
}
const FmxData& DataOf(const void* self) {
    return Ref<FmxData>(self);
}

NativeType CheckedType(int32_t type) {
    if (type < 0 || type > static_cast<int32_t>(NativeType::kBoolean)) {
        throw std::invalid_argument("unknown native type");
    }
    return static_cast<NativeType>(type);
}

NativeType DateTimeType(int32_t type) {
    const NativeType checked = CheckedType(type);
    if (checked != NativeType::kDate && checked != NativeType::kTime &&
        checked != NativeType::kTimestamp) {
        throw std::invalid_argument("not a date or time type");
    }
    return checked;
}

// Stores `value` as `nativeType`, keeping the locale the data already had.
void Store(void* self, Value value, int32_t nativeType) {
    FmxData& data = DataOf(self);
    const NativeType type = CheckedType(nativeType);
    value.SetLocale(data.value.Locale());
    value.ConvertTo(type);
    data.value = std::move(value);
}

}  // namespace

extern "C" {

FmxData* FM_Data_Constructor1(FmxErr& err) {
    return Guard(err, [] { return new FmxData(); });
}

void FM_Data_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxData*>(self); });
}

bool FM_Data_IsEmpty(const void* self, FmxErr& err) {
    return Guard(err, [&] { return DataOf(self).value.IsEmpty(); });
}

bool FM_Data_IsValid(const void* self, FmxErr& err) {
    return Guard(err, [&] { return DataOf(self).value.IsValid(); });
}

// Calculations never carry find requests.
bool FM_Data_IsFindRequest(const void* self, FmxErr& err) {
    return Guard(err, [&] {
        DataOf(self);
        return false;
    });
}

void FM_Data_Clear(void* self, int32_t newNativeType, FmxErr& err) {
    Guard(err, [&] { DataOf(self).value.Clear(CheckedType(newNativeType)); });
}

int32_t FM_Data_GetNativeType(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int32_t>(DataOf(self).value.Type()); });
}

void FM_Data_ConvertData(void* self, int32_t nativeType, FmxErr& err) {
    Guard(err, [&] { DataOf(self).value.ConvertTo(CheckedType(nativeType)); });
}

const FmxText* FM_Data_GetAsText(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::TextView(DataOf(self)); });
}

const FmxFixPt* FM_Data_GetAsNumber(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::NumberView(DataOf(self)); });
}

const FmxDateTime* FM_Data_GetAsDate(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::DateView(DataOf(self)); });
}

const FmxDateTime* FM_Data_GetAsTime(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::TimeView(DataOf(self)); });
}

const FmxDateTime* FM_Data_GetAsTimeStamp(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::TimestampView(DataOf(self)); });
}

bool FM_Data_GetAsBoolean(const void* self, FmxErr& err) {
    return Guard(err, [&] { return DataOf(self).value.AsBoolean(); });
}

const FmxBinaryData* FM_Data_GetBinaryData(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::BinaryView(DataOf(self)); });
}

const FmxLocale* FM_Data_GetLocale(const void* self, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::LocaleView(DataOf(self)); });
}

// Text that is no value of the requested type changes nothing and reports 1200.
FmxErrcode FM_Data_SetAsText(void* self, const FmxText& textData, const FmxLocale& sourceLocale,
                             int32_t nativeType, FmxErr& err) {
    return Guard(err, [&]() -> FmxErrcode {
        FmxData& data = DataOf(self);
        Value value;
        value.SetLocale(Ref(sourceLocale).type);
        if (!value.SetFromText(Ref(textData).text, CheckedType(nativeType))) {
            return fmhost::kErrCalcGeneric;
        }
        data.value = std::move(value);
        return 0;
    });
}

void FM_Data_SetAsNumber(void* self, const FmxFixPt& numericData, int32_t nativeType, FmxErr& err) {
    Guard(err, [&] { Store(self, Value(Ref(numericData).number), nativeType); });
}

void FM_Data_SetAsDate(void* self, const FmxDateTime& dateData, int32_t nativeType, FmxErr& err) {
    Guard(err, [&] { Store(self, Value::FromDate(Ref(dateData).value), nativeType); });
}

void FM_Data_SetAsTime(void* self, const FmxDateTime& timeData, int32_t nativeType, FmxErr& err) {
    Guard(err, [&] { Store(self, Value::FromTime(Ref(timeData).value), nativeType); });
}

void FM_Data_SetAsTimeStamp(void* self, const FmxDateTime& timeStampData, int32_t nativeType,
                            FmxErr& err) {
    Guard(err, [&] { Store(self, Value::FromTimestamp(Ref(timeStampData).value), nativeType); });
}

void FM_Data_SetDateTime(void* self, const FmxDateTime& dateTimeData, int32_t dateTimeType,
                         int32_t nativeType, FmxErr& err) {
    Guard(err, [&] {
        Store(self, Value::FromDateTime(Ref(dateTimeData).value, DateTimeType(dateTimeType)),
              nativeType);
    });
}

// The host core has no container stored under another native type, so the value always
// becomes a container whatever `forceBinaryNativeType` says.
void FM_Data_SetBinaryData(void* self, const FmxBinaryData& binaryData, bool, FmxErr& err) {
    Guard(err, [&] {
        FmxData& data = DataOf(self);
        Value value(Ref(binaryData).container);
        value.SetLocale(data.value.Locale());
        data.value = std::move(value);
    });
}

uint16_t FM_Data_GetPostscriptFontID(const void* self, const FmxText& fontPostscriptName,
                                     const FmxExprEnv& env, FmxErr& err) {
    return Guard(err, [&] {
        DataOf(self);
        return fmwrapper::ContextOf(Ref(env)).GetSession().Fonts().IdFor(
            Ref(fontPostscriptName).text.Chars());
    });
}

bool FM_Data_GetPostscriptFontInfo(const void* self, uint16_t font, FmxText& fontPostscriptName,
                                   const FmxExprEnv& env, FmxErr& err) {
    return Guard(err, [&] {
        DataOf(self);
        auto name = fmwrapper::ContextOf(Ref(env)).GetSession().Fonts().NameOf(font);
        if (!name)
            return false;
        Ref(fontPostscriptName).text.Assign(std::move(*name));
        return true;
    });
}

}  // extern "C"
