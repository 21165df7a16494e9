// Owners of host objects the plug-in creates. Each releases its object with the matching
// FM_*_Delete when it goes out of scope, on every path (a failure while deleting cannot be
// reported from a destructor and is ignored). Objects the host lends us (arguments, the result,
// values returned by getters) are never put into these owners.
#pragma once

#include <cstdint>
#include <memory>

#include "fmx_functions.h"

namespace fmlib {

template <typename T, void (*Delete)(void*, FmxErr&)>
struct HostDeleter {
    void operator()(T* object) const noexcept {
        FmxErr slot{kFmxErrSlotVersion, kFmxErrNone};
        Delete(object, slot);
    }
};

using TextPtr = std::unique_ptr<FmxText, HostDeleter<FmxText, FM_Text_Delete>>;
using DataPtr = std::unique_ptr<FmxData, HostDeleter<FmxData, FM_Data_Delete>>;
using QuadCharPtr = std::unique_ptr<FmxQuadChar, HostDeleter<FmxQuadChar, FM_QuadChar_Delete>>;
using FixPtPtr = std::unique_ptr<FmxFixPt, HostDeleter<FmxFixPt, FM_FixPt_Delete>>;
using DateTimePtr = std::unique_ptr<FmxDateTime, HostDeleter<FmxDateTime, FM_DateTime_Delete>>;
using LocalePtr = std::unique_ptr<FmxLocale, HostDeleter<FmxLocale, FM_Locale_Delete>>;
using BinaryDataPtr =
    std::unique_ptr<FmxBinaryData, HostDeleter<FmxBinaryData, FM_BinaryData_Delete>>;
using ColorPtr = std::unique_ptr<FmxColor, HostDeleter<FmxColor, FM_Color_Delete>>;
using CharacterStylePtr =
    std::unique_ptr<FmxCharacterStyle, HostDeleter<FmxCharacterStyle, FM_CharacterStyle_Delete>>;

// Constructors: each raises as HostCall does when the host fails to make the object.
TextPtr NewText();
DataPtr NewData();
QuadCharPtr NewQuadChar();
QuadCharPtr NewQuadChar(char c0, char c1, char c2, char c3);
FixPtPtr NewFixPt(int32_t value, int32_t precision);
CharacterStylePtr NewCharacterStyle();
DateTimePtr NewDateTime();
BinaryDataPtr NewBinaryData();
ColorPtr NewColor(uint8_t red, uint8_t green, uint8_t blue);

}  // namespace fmlib
