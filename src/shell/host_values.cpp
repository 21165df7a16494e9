#include "shell/host_values.h"

#include "fmx_constants.h"
#include "shell/borrowed.h"
#include "shell/host_error.h"
#include "shell/host_objects.h"
#include "shell/newer_host_functions.h"

namespace fmlib {

namespace {

// What the stream readers answer where the host has no accessor: any non-zero code means none.
constexpr FmxErrcode kNoStreamAccessor = -1;

}  // namespace

double FixPtAsFloat(const FmxFixPt& number) {
    return HostCall(FM_FixPt_AsFloat, &number);
}

void FixPtAssignInt64(FmxFixPt& number, int64_t value) {
    if (const auto assign = NewerHostFunction<decltype(&FM_FixPt_AssignInt64)>(
            "FM_FixPt_AssignInt64", kInt64NumbersVersion)) {
        HostCall(assign, &number, value);
        return;
    }
    // An older host builds it exactly from 32-bit parts: ((high * 2^16) + middle) * 2^16 + low,
    // where high is the value floored by 2^32 and middle and low are 16-bit digits.
    const auto high = static_cast<int32_t>(value >> 32);
    const auto middle = static_cast<int32_t>((value >> 16) & 0xFFFF);
    const auto low = static_cast<int32_t>(value & 0xFFFF);
    HostCall(FM_FixPt_AssignInt, &number, high);
    const FixPtPtr factor = NewFixPt(0x10000, fmx::kDefaultPrecision);
    const FixPtPtr product = NewFixPt(0, fmx::kDefaultPrecision);
    for (const int32_t digit : {middle, low}) {
        HostCall(FM_FixPt_Multiply, &number, *factor, *product);
        HostCall(FM_FixPt_AssignFixPt, &number, *product);
        HostCall(FM_FixPt_Increment, &number, digit);
    }
}

int16_t DateTimeGetYear(const FmxDateTime& value) {
    return HostCall(FM_DateTime_GetYear, &value);
}
int16_t DateTimeGetMonth(const FmxDateTime& value) {
    return HostCall(FM_DateTime_GetMonth, &value);
}
int16_t DateTimeGetDay(const FmxDateTime& value) {
    return HostCall(FM_DateTime_GetDay, &value);
}
int32_t DateTimeGetHour(const FmxDateTime& value) {
    return HostCall(FM_DateTime_GetHour, &value);
}
int16_t DateTimeGetMinute(const FmxDateTime& value) {
    return HostCall(FM_DateTime_GetMinute, &value);
}
int16_t DateTimeGetSec(const FmxDateTime& value) {
    return HostCall(FM_DateTime_GetSec, &value);
}
int32_t DateTimeGetUSec(const FmxDateTime& value) {
    return HostCall(FM_DateTime_GetUSec, &value);
}

FmxErrcode DateTimeSetNormalizedDate(FmxDateTime& value, int16_t month, int16_t day, int16_t year) {
    return HostCall(FM_DateTime_SetNormalizedDate1, &value, month, day, year);
}
FmxErrcode DateTimeSetNormalizedTime(FmxDateTime& value, int64_t hour, int16_t minute, int16_t sec,
                                     int32_t usec) {
    return HostCall(FM_DateTime_SetNormalizedTime1, &value, hour, minute, sec, usec);
}

int32_t BinaryDataGetCount(const FmxBinaryData& data) {
    return HostCall(FM_BinaryData_GetCount, &data);
}

void BinaryDataGetType(const FmxBinaryData& data, int32_t index, FmxQuadChar& type) {
    HostCall(FM_BinaryData_GetType, &data, index, type);
}

uint32_t BinaryDataGetSize(const FmxBinaryData& data, int32_t index) {
    return HostCall(FM_BinaryData_GetSize, &data, index);
}

FmxErrcode BinaryDataGetData(const FmxBinaryData& data, int32_t index, uint32_t offset,
                             uint32_t amount, void* buffer) {
    return HostCall(FM_BinaryData_GetData, &data, index, offset, amount, buffer);
}

// Without the accessors an older host has no way for us to read these streams: "none there".
FmxErrcode BinaryDataGetFNAMData(const FmxBinaryData& data, FmxText& fileName) {
    const auto get = NewerHostFunction<decltype(&FM_BinaryData_GetFNAMData)>(
        "FM_BinaryData_GetFNAMData", kFileNameStreamsVersion);
    return get ? HostCall(get, &data, fileName) : kNoStreamAccessor;
}

FmxErrcode BinaryDataGetSIZEData(const FmxBinaryData& data, int16_t& width, int16_t& height) {
    const auto get = NewerHostFunction<decltype(&FM_BinaryData_GetSIZEData)>(
        "FM_BinaryData_GetSIZEData", kFileNameStreamsVersion);
    return get ? HostCall(get, &data, width, height) : kNoStreamAccessor;
}

FmxErrcode BinaryDataAdd(FmxBinaryData& data, const FmxQuadChar& type, uint32_t amount,
                         const void* bytes) {
    // The host declares the buffer writable but only reads it.
    return HostCall(FM_BinaryData_Add, &data, type, amount, const_cast<void*>(bytes));
}

// An older host cannot be given these streams: the container goes without them.
FmxErrcode BinaryDataAddFNAMData(FmxBinaryData& data, const FmxText& fileName) {
    const auto add = NewerHostFunction<decltype(&FM_BinaryData_AddFNAMData)>(
        "FM_BinaryData_AddFNAMData", kFileNameStreamsVersion);
    return add ? HostCall(add, &data, fileName) : 0;
}

FmxErrcode BinaryDataAddSIZEData(FmxBinaryData& data, int16_t width, int16_t height) {
    const auto add = NewerHostFunction<decltype(&FM_BinaryData_AddSIZEData)>(
        "FM_BinaryData_AddSIZEData", kFileNameStreamsVersion);
    return add ? HostCall(add, &data, width, height) : 0;
}

uint8_t QuadCharAt(const FmxQuadChar& code, int32_t index) {
    return HostCall(FM_QuadChar_operatorCAR, &code, index);
}

bool CharacterStyleIsAllDisabled(const FmxCharacterStyle& style) {
    return HostCall(FM_CharacterStyle_IsAllDisabled, &style);
}
bool CharacterStyleIsFontEnabled(const FmxCharacterStyle& style) {
    return HostCall(FM_CharacterStyle_IsFontEnabled, &style);
}
bool CharacterStyleIsAnyFaceEnabled(const FmxCharacterStyle& style) {
    return HostCall(FM_CharacterStyle_IsAnyFaceEnabled, &style);
}
bool CharacterStyleIsSizeEnabled(const FmxCharacterStyle& style) {
    return HostCall(FM_CharacterStyle_IsSizeEnabled, &style);
}
bool CharacterStyleIsColorEnabled(const FmxCharacterStyle& style) {
    return HostCall(FM_CharacterStyle_IsColorEnabled, &style);
}
uint16_t CharacterStyleGetFont(const FmxCharacterStyle& style) {
    return HostCall(FM_CharacterStyle_GetFont, &style);
}
uint16_t CharacterStyleGetFace(const FmxCharacterStyle& style) {
    return HostCall(FM_CharacterStyle_GetFace, &style);
}
uint16_t CharacterStyleGetSize(const FmxCharacterStyle& style) {
    return HostCall(FM_CharacterStyle_GetSize, &style);
}
const FmxColor& CharacterStyleGetColor(const FmxCharacterStyle& style) {
    return Borrowed(HostCall(FM_CharacterStyle_GetColor, &style));
}

bool CharacterStyleEquals(const FmxCharacterStyle& a, const FmxCharacterStyle& b) {
    return HostCall(FM_CharacterStyle_operatorEQ, &a, b);
}

void CharacterStyleSetFont(FmxCharacterStyle& style, uint16_t font) {
    HostCall(FM_CharacterStyle_SetFont, &style, font);
}

void CharacterStyleSetFace(FmxCharacterStyle& style, uint16_t face) {
    HostCall(FM_CharacterStyle_SetFace, &style, face);
}

void CharacterStyleSetSize(FmxCharacterStyle& style, uint16_t size) {
    HostCall(FM_CharacterStyle_SetSize, &style, size);
}

void CharacterStyleSetColor(FmxCharacterStyle& style, const FmxColor& color) {
    HostCall(FM_CharacterStyle_SetColor, &style, color);
}

uint8_t ColorGetRed(const FmxColor& color) {
    return HostCall(FM_Color_GetRed, &color);
}
uint8_t ColorGetGreen(const FmxColor& color) {
    return HostCall(FM_Color_GetGreen, &color);
}
uint8_t ColorGetBlue(const FmxColor& color) {
    return HostCall(FM_Color_GetBlue, &color);
}
uint8_t ColorGetAlpha(const FmxColor& color) {
    return HostCall(FM_Color_GetAlpha, &color);
}

}  // namespace fmlib
