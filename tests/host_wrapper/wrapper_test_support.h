// Shorthands for calling the plug-in interface from tests: a fresh error slot per call, owned
// objects, UTF-16 texts.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "fmhost/host_objects.h"
#include "fmx_functions.h"

namespace wrapper_test {

using fmhost::driver::Checked;
using fmhost::driver::DataPtr;
using fmhost::driver::MakeText;
using fmhost::driver::QuadCharPtr;
using fmhost::driver::TextChars;
using fmhost::driver::TextPtr;

// An error slot that remembers the code a call wrote into it.
struct Slot {
    FmxErr err{kFmxErrSlotVersion, kFmxErrNone};
    operator FmxErr&() { return err; }  // NOLINT: passed straight to the interface
    int32_t code() const { return err.code; }
};

template <typename T, void (*Delete)(void*, FmxErr&)>
using Owned = std::unique_ptr<T, fmhost::driver::HostDeleter<T, Delete>>;

using FixPtPtr = Owned<FmxFixPt, FM_FixPt_Delete>;
using DateTimePtr = Owned<FmxDateTime, FM_DateTime_Delete>;
using BinaryPtr = Owned<FmxBinaryData, FM_BinaryData_Delete>;
using StylePtr = Owned<FmxCharacterStyle, FM_CharacterStyle_Delete>;
using ColorPtr = Owned<FmxColor, FM_Color_Delete>;
using LocalePtr = Owned<FmxLocale, FM_Locale_Delete>;
using DataVectPtr = Owned<FmxDataVect, FM_DataVect_Delete>;
using ExprEnvPtr = fmhost::driver::ExprEnvPtr;

inline QuadCharPtr Code(const char (&c)[5]) {
    return QuadCharPtr(
        Checked([&](FmxErr& e) { return FM_QuadChar_Constructor2(c[0], c[1], c[2], c[3], e); }));
}

inline FixPtPtr Number(int32_t value) {
    return FixPtPtr(Checked([&](FmxErr& e) { return FM_FixPt_Constructor1(value, 16, e); }));
}

inline DataPtr NewData() {
    return DataPtr(Checked([](FmxErr& e) { return FM_Data_Constructor1(e); }));
}

inline std::u16string DataText(const FmxData& data) {
    return TextChars(*Checked([&](FmxErr& e) { return FM_Data_GetAsText(&data, e); }));
}

}  // namespace wrapper_test
