// Wrappers of the host's typed-value and argument-list calls (one per FM_Data_* / FM_DataVect_*
// call used). Getters return objects the host lends for the duration of the call.
#pragma once

#include <cstdint>

#include "fmx_functions.h"

namespace fmlib {

int32_t DataGetNativeType(const FmxData& data);
const FmxText& DataGetAsText(const FmxData& data);
const FmxFixPt& DataGetAsNumber(const FmxData& data);
const FmxDateTime& DataGetAsTimeStamp(const FmxData& data);
const FmxBinaryData& DataGetBinaryData(const FmxData& data);
const FmxLocale& DataGetLocale(const FmxData& data);
FmxErrcode DataSetAsText(FmxData& data, const FmxText& text, const FmxLocale& locale,
                         int32_t nativeType);
void DataSetBinaryData(FmxData& data, const FmxBinaryData& binary);
void DataSetAsNumber(FmxData& data, const FmxFixPt& number, int32_t nativeType);
void DataSetAsTimeStamp(FmxData& data, const FmxDateTime& timestamp, int32_t nativeType);
// The PostScript name of a font id of the environment's database; false for an unknown id.
// The font id of a PostScript font name in the environment's database.
uint16_t DataGetPostscriptFontID(const FmxData& data, const FmxText& name, const FmxExprEnv& env);
bool DataGetPostscriptFontInfo(const FmxData& data, uint16_t font, FmxText& name,
                               const FmxExprEnv& env);

uint32_t DataVectSize(const FmxDataVect& values);
const FmxData& DataVectAt(const FmxDataVect& values, uint32_t position);
const FmxText& DataVectAtAsText(const FmxDataVect& values, uint32_t position);

}  // namespace fmlib
