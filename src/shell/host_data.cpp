#include "shell/host_data.h"

#include "shell/borrowed.h"
#include "shell/host_error.h"
#include "shell/newer_host_functions.h"

namespace fmlib {

int32_t DataGetNativeType(const FmxData& data) {
    return HostCall(FM_Data_GetNativeType, &data);
}

const FmxText& DataGetAsText(const FmxData& data) {
    return Borrowed(HostCall(FM_Data_GetAsText, &data));
}

const FmxFixPt& DataGetAsNumber(const FmxData& data) {
    return Borrowed(HostCall(FM_Data_GetAsNumber, &data));
}

const FmxDateTime& DataGetAsTimeStamp(const FmxData& data) {
    return Borrowed(HostCall(FM_Data_GetAsTimeStamp, &data));
}

const FmxBinaryData& DataGetBinaryData(const FmxData& data) {
    return Borrowed(HostCall(FM_Data_GetBinaryData, &data));
}

const FmxLocale& DataGetLocale(const FmxData& data) {
    return Borrowed(HostCall(FM_Data_GetLocale, &data));
}

FmxErrcode DataSetAsText(FmxData& data, const FmxText& text, const FmxLocale& locale,
                         int32_t nativeType) {
    return HostCall(FM_Data_SetAsText, &data, text, locale, nativeType);
}

void DataSetBinaryData(FmxData& data, const FmxBinaryData& binary) {
    HostCall(FM_Data_SetBinaryData, &data, binary, true);
}

void DataSetAsNumber(FmxData& data, const FmxFixPt& number, int32_t nativeType) {
    HostCall(FM_Data_SetAsNumber, &data, number, nativeType);
}

// An older host knows fonts by its own ids only: "cannot" (0xFFFF), as the host itself answers.
uint16_t DataGetPostscriptFontID(const FmxData& data, const FmxText& name, const FmxExprEnv& env) {
    const auto get = NewerHostFunction<decltype(&FM_Data_GetPostscriptFontID)>(
        "FM_Data_GetPostscriptFontID", kPostscriptFontsVersion);
    return get ? HostCall(get, &data, name, env) : uint16_t{0xFFFF};
}

void DataSetAsTimeStamp(FmxData& data, const FmxDateTime& timestamp, int32_t nativeType) {
    HostCall(FM_Data_SetAsTimeStamp, &data, timestamp, nativeType);
}

bool DataGetPostscriptFontInfo(const FmxData& data, uint16_t font, FmxText& name,
                               const FmxExprEnv& env) {
    const auto get = NewerHostFunction<decltype(&FM_Data_GetPostscriptFontInfo)>(
        "FM_Data_GetPostscriptFontInfo", kPostscriptFontsVersion);
    return get != nullptr && HostCall(get, &data, font, name, env);
}

uint32_t DataVectSize(const FmxDataVect& values) {
    return HostCall(FM_DataVect_Size, &values);
}

const FmxData& DataVectAt(const FmxDataVect& values, uint32_t position) {
    return Borrowed(HostCall(FM_DataVect_At, &values, position));
}

const FmxText& DataVectAtAsText(const FmxDataVect& values, uint32_t position) {
    return Borrowed(HostCall(FM_DataVect_AtAsText, &values, position));
}

}  // namespace fmlib
