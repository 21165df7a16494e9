// Wrappers of the host's number, date-time, container, four-character-code and character-style
// calls (one per FM_* call used).
#pragma once

#include <cstdint>

#include "fmx_functions.h"

namespace fmlib {

double FixPtAsFloat(const FmxFixPt& number);
void FixPtAssignInt64(FmxFixPt& number, int64_t value);

int16_t DateTimeGetYear(const FmxDateTime& value);
int16_t DateTimeGetMonth(const FmxDateTime& value);
int16_t DateTimeGetDay(const FmxDateTime& value);
int32_t DateTimeGetHour(const FmxDateTime& value);
int16_t DateTimeGetMinute(const FmxDateTime& value);
int16_t DateTimeGetSec(const FmxDateTime& value);
int32_t DateTimeGetUSec(const FmxDateTime& value);
FmxErrcode DateTimeSetNormalizedDate(FmxDateTime& value, int16_t month, int16_t day, int16_t year);
FmxErrcode DateTimeSetNormalizedTime(FmxDateTime& value, int64_t hour, int16_t minute, int16_t sec,
                                     int32_t usec);

int32_t BinaryDataGetCount(const FmxBinaryData& data);
void BinaryDataGetType(const FmxBinaryData& data, int32_t index, FmxQuadChar& type);
uint32_t BinaryDataGetSize(const FmxBinaryData& data, int32_t index);
FmxErrcode BinaryDataGetData(const FmxBinaryData& data, int32_t index, uint32_t offset,
                             uint32_t amount, void* buffer);
FmxErrcode BinaryDataGetFNAMData(const FmxBinaryData& data, FmxText& fileName);
FmxErrcode BinaryDataGetSIZEData(const FmxBinaryData& data, int16_t& width, int16_t& height);

FmxErrcode BinaryDataAdd(FmxBinaryData& data, const FmxQuadChar& type, uint32_t amount,
                         const void* bytes);
FmxErrcode BinaryDataAddFNAMData(FmxBinaryData& data, const FmxText& fileName);
FmxErrcode BinaryDataAddSIZEData(FmxBinaryData& data, int16_t width, int16_t height);

uint8_t QuadCharAt(const FmxQuadChar& code, int32_t index);

bool CharacterStyleIsAllDisabled(const FmxCharacterStyle& style);
bool CharacterStyleIsFontEnabled(const FmxCharacterStyle& style);
bool CharacterStyleIsAnyFaceEnabled(const FmxCharacterStyle& style);
bool CharacterStyleIsSizeEnabled(const FmxCharacterStyle& style);
bool CharacterStyleIsColorEnabled(const FmxCharacterStyle& style);
uint16_t CharacterStyleGetFont(const FmxCharacterStyle& style);
uint16_t CharacterStyleGetFace(const FmxCharacterStyle& style);
uint16_t CharacterStyleGetSize(const FmxCharacterStyle& style);
const FmxColor& CharacterStyleGetColor(const FmxCharacterStyle& style);
bool CharacterStyleEquals(const FmxCharacterStyle& a, const FmxCharacterStyle& b);
void CharacterStyleSetFont(FmxCharacterStyle& style, uint16_t font);
void CharacterStyleSetFace(FmxCharacterStyle& style, uint16_t face);
void CharacterStyleSetSize(FmxCharacterStyle& style, uint16_t size);
void CharacterStyleSetColor(FmxCharacterStyle& style, const FmxColor& color);

uint8_t ColorGetRed(const FmxColor& color);
uint8_t ColorGetGreen(const FmxColor& color);
uint8_t ColorGetBlue(const FmxColor& color);
uint8_t ColorGetAlpha(const FmxColor& color);

}  // namespace fmlib
