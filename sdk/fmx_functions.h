// Our declarations of the host's plug-in interface (FMWrapper.dll on Windows x64,
// libFMWrapper.so on Linux).
// Every function has C linkage; every one but the two shared colours takes the per-call error
// slot last. Object types are opaque: the plug-in only ever holds pointers to them.
#pragma once

#include <cstddef>
#include <cstdint>

#ifndef FMX_API
#define FMX_API
#endif

extern "C" {

// The per-call error slot: the caller sets {1, 0}; the host writes 1 (memory) or 2 (other).
struct FmxErr {
    int32_t version;
    int32_t code;
};
static_assert(sizeof(FmxErr) == 8, "error slot is 8 bytes");

enum : int32_t { kFmxErrSlotVersion = 1, kFmxErrNone = 0, kFmxErrMemory = 1, kFmxErrOther = 2 };

typedef int16_t FmxErrcode;

struct FmxQuadChar;
struct FmxLocale;
struct FmxText;
struct FmxColor;
struct FmxCharacterStyle;
struct FmxData;
struct FmxDataVect;
struct FmxRowVect;
struct FmxExprEnv;
struct FmxFixPt;
struct FmxDateTime;
struct FmxBinaryData;

// The callback the host calls for every registered function (no plug-in id is passed).
typedef FmxErrcode (*FmxExtPluginFn)(int16_t functionId, const FmxExprEnv& env,
                                     const FmxDataVect& parms, FmxData& result);

// ---- Four-character codes
FMX_API FmxQuadChar* FM_QuadChar_Constructor1(FmxErr& err);
FMX_API FmxQuadChar* FM_QuadChar_Constructor2(char c0, char c1, char c2, char c3, FmxErr& err);
FMX_API FmxQuadChar* FM_QuadChar_Constructor3(const FmxQuadChar& value, FmxErr& err);
FMX_API const FmxQuadChar* FM_QuadChar_operatorAS(void* self, const FmxQuadChar& value,
                                                  FmxErr& err);
FMX_API uint8_t FM_QuadChar_operatorAR(void* self, int32_t i, FmxErr& err);
FMX_API uint8_t FM_QuadChar_operatorCAR(const void* self, int32_t i, FmxErr& err);
FMX_API bool FM_QuadChar_operatorEQ(const void* self, const FmxQuadChar& value, FmxErr& err);
FMX_API bool FM_QuadChar_operatorNE(const void* self, const FmxQuadChar& value, FmxErr& err);
FMX_API bool FM_QuadChar_operatorLT(const void* self, const FmxQuadChar& value, FmxErr& err);
FMX_API bool FM_QuadChar_operatorLE(const void* self, const FmxQuadChar& value, FmxErr& err);
FMX_API bool FM_QuadChar_operatorGT(const void* self, const FmxQuadChar& value, FmxErr& err);
FMX_API bool FM_QuadChar_operatorGE(const void* self, const FmxQuadChar& value, FmxErr& err);
FMX_API uint32_t FM_QuadChar_GetMacType(const void* self, FmxErr& err);
FMX_API void FM_QuadChar_SetMacType(void* self, uint32_t value, FmxErr& err);
FMX_API void FM_QuadChar_Delete(void* self, FmxErr& err);

// ---- Locales
FMX_API FmxLocale* FM_Locale_Constructor1(int32_t inputType, FmxErr& err);
FMX_API FmxLocale* FM_Locale_Constructor2(const FmxLocale& copyConstruct, FmxErr& err);
FMX_API FmxLocale* FM_Locale_operatorAS(void* self, const FmxLocale& rhs, FmxErr& err);
FMX_API void FM_Locale_Delete(void* self, FmxErr& err);

// ---- Texts (UTF-16, styled)
FMX_API FmxText* FM_Text_Constructor1(FmxErr& err);
FMX_API void FM_Text_Delete(void* self, FmxErr& err);
FMX_API uint32_t FM_Text_GetSize(const void* self, FmxErr& err);
FMX_API void FM_Text_Assign(void* self, const char* s, int32_t encoding, FmxErr& err);
FMX_API void FM_Text_AssignWithLength(void* self, const char* s, uint32_t strlength,
                                      int32_t encoding, FmxErr& err);
FMX_API void FM_Text_AssignWide(void* self, const wchar_t* s, FmxErr& err);
FMX_API void FM_Text_AssignWideWithLength(void* self, const wchar_t* s, uint32_t strlength,
                                          FmxErr& err);
FMX_API void FM_Text_AssignUnicode(void* self, const uint16_t* s, FmxErr& err);
FMX_API void FM_Text_AssignUnicodeWithLength(void* self, const uint16_t* s, uint32_t strlength,
                                             FmxErr& err);
FMX_API void FM_Text_GetBytes(const void* self, char* buffer, uint32_t buffersize,
                              uint32_t position, uint32_t size, int32_t encoding, FmxErr& err);
FMX_API uint32_t FM_Text_GetBytesEx(const void* self, char* buffer, uint32_t buffersize,
                                    uint32_t position, uint32_t size, int32_t encoding,
                                    FmxErr& err);
FMX_API void FM_Text_GetUnicode(const void* self, uint16_t* s, uint32_t position, uint32_t size,
                                FmxErr& err);
FMX_API void FM_Text_SetText(void* self, const FmxText& other, uint32_t position, uint32_t size,
                             FmxErr& err);
FMX_API void FM_Text_AppendText(void* self, const FmxText& other, uint32_t position, uint32_t size,
                                FmxErr& err);
FMX_API void FM_Text_InsertText(void* self, const FmxText& other, uint32_t position, FmxErr& err);
FMX_API void FM_Text_DeleteText(void* self, uint32_t positionToDelete, uint32_t sizeToDelete,
                                FmxErr& err);
FMX_API uint32_t FM_Text_Find(const void* self, const FmxText& other, uint32_t position,
                              FmxErr& err);
FMX_API uint32_t FM_Text_FindPrev(const void* self, const FmxText& other, uint32_t position,
                                  FmxErr& err);
FMX_API uint32_t FM_Text_FindIgnoringCase(const void* self, const FmxText& other, uint32_t position,
                                          FmxErr& err);
FMX_API uint32_t FM_Text_FindPrevIgnoringCase(const void* self, const FmxText& other,
                                              uint32_t position, FmxErr& err);
FMX_API void FM_Text_Uppercase(const void* self, FmxErr& err);
FMX_API void FM_Text_Lowercase(const void* self, FmxErr& err);
FMX_API void FM_Text_GetStyle(const void* self, FmxCharacterStyle& style, uint32_t position,
                              FmxErr& err);
FMX_API void FM_Text_GetDefaultStyle(const void* self, FmxCharacterStyle& style, FmxErr& err);
FMX_API void FM_Text_SetStyle(void* self, const FmxCharacterStyle& style, uint32_t position,
                              uint32_t size, FmxErr& err);
FMX_API void FM_Text_RemoveStyle(void* self, const FmxCharacterStyle& style, FmxErr& err);
FMX_API void FM_Text_ResetAllStyleBuffers(void* self, FmxErr& err);
FMX_API bool FM_Text_operatorEQ(const void* self, const FmxText& that, FmxErr& err);
FMX_API bool FM_Text_operatorNE(const void* self, const FmxText& that, FmxErr& err);
FMX_API bool FM_Text_operatorLT(const void* self, const FmxText& that, FmxErr& err);
FMX_API bool FM_Text_operatorLE(const void* self, const FmxText& that, FmxErr& err);
FMX_API bool FM_Text_operatorGT(const void* self, const FmxText& that, FmxErr& err);
FMX_API bool FM_Text_operatorGE(const void* self, const FmxText& that, FmxErr& err);

// ---- Colours
FMX_API FmxColor* FM_Color_Constructor1(FmxErr& err);
FMX_API FmxColor* FM_Color_Constructor2(uint8_t red, uint8_t green, uint8_t blue, uint8_t alpha,
                                        FmxErr& err);
FMX_API FmxColor* FM_Color_Constructor3(const FmxColor& color, FmxErr& err);
FMX_API void FM_Color_SetRed(void* self, uint8_t r, FmxErr& err);
FMX_API void FM_Color_SetGreen(void* self, uint8_t g, FmxErr& err);
FMX_API void FM_Color_SetBlue(void* self, uint8_t b, FmxErr& err);
FMX_API void FM_Color_SetAlpha(void* self, uint8_t a, FmxErr& err);
FMX_API uint8_t FM_Color_GetRed(const void* self, FmxErr& err);
FMX_API uint8_t FM_Color_GetGreen(const void* self, FmxErr& err);
FMX_API uint8_t FM_Color_GetBlue(const void* self, FmxErr& err);
FMX_API uint8_t FM_Color_GetAlpha(const void* self, FmxErr& err);
FMX_API uint16_t FM_Color_GetRedUpsample(const void* self, FmxErr& err);
FMX_API uint16_t FM_Color_GetGreenUpsample(const void* self, FmxErr& err);
FMX_API uint16_t FM_Color_GetBlueUpsample(const void* self, FmxErr& err);
FMX_API uint16_t FM_Color_GetAlphaUpsample(const void* self, FmxErr& err);
FMX_API FmxColor* FM_Color_operatorAS(void* self, const FmxColor& rhs, FmxErr& err);
FMX_API bool FM_Color_operatorEQ(const void* self, const FmxColor& rhs, FmxErr& err);
FMX_API bool FM_Color_operatorNE(const void* self, const FmxColor& rhs, FmxErr& err);
FMX_API const FmxColor* FM_Color_White();
FMX_API const FmxColor* FM_Color_Black();
FMX_API void FM_Color_Delete(void* self, FmxErr& err);

// ---- Character styles
FMX_API FmxCharacterStyle* FM_CharacterStyle_Constructor1(FmxErr& err);
FMX_API FmxCharacterStyle* FM_CharacterStyle_Constructor2(uint16_t font, uint16_t face,
                                                          uint16_t size, const FmxColor& color,
                                                          FmxErr& err);
FMX_API FmxCharacterStyle* FM_CharacterStyle_Constructor3(const FmxCharacterStyle& style,
                                                          FmxErr& err);
FMX_API void FM_CharacterStyle_EnableFont(void* self, FmxErr& err);
FMX_API void FM_CharacterStyle_EnableFace(void* self, uint16_t face, FmxErr& err);
FMX_API void FM_CharacterStyle_EnableSize(void* self, FmxErr& err);
FMX_API void FM_CharacterStyle_EnableColor(void* self, FmxErr& err);
FMX_API void FM_CharacterStyle_DisableFont(void* self, FmxErr& err);
FMX_API void FM_CharacterStyle_DisableFace(void* self, uint16_t face, FmxErr& err);
FMX_API void FM_CharacterStyle_DisableAllFaces(void* self, FmxErr& err);
FMX_API void FM_CharacterStyle_DisableSize(void* self, FmxErr& err);
FMX_API void FM_CharacterStyle_DisableColor(void* self, FmxErr& err);
FMX_API void FM_CharacterStyle_DisableAll(void* self, FmxErr& err);
FMX_API bool FM_CharacterStyle_IsAllDisabled(const void* self, FmxErr& err);
FMX_API bool FM_CharacterStyle_IsFontEnabled(const void* self, FmxErr& err);
FMX_API bool FM_CharacterStyle_IsFaceEnabled(const void* self, uint16_t face, FmxErr& err);
FMX_API bool FM_CharacterStyle_IsAnyFaceEnabled(const void* self, FmxErr& err);
FMX_API bool FM_CharacterStyle_IsSizeEnabled(const void* self, FmxErr& err);
FMX_API bool FM_CharacterStyle_IsColorEnabled(const void* self, FmxErr& err);
FMX_API void FM_CharacterStyle_SetFontInformation(void* self, uint16_t font, uint16_t face,
                                                  uint16_t size, FmxErr& err);
FMX_API void FM_CharacterStyle_GetFontInformation(void* self, uint16_t& font, uint16_t& face,
                                                  uint16_t& size, FmxErr& err);
FMX_API void FM_CharacterStyle_SetFont(void* self, uint16_t font, FmxErr& err);
FMX_API void FM_CharacterStyle_SetFace(void* self, uint16_t face, FmxErr& err);
FMX_API void FM_CharacterStyle_SetSize(void* self, uint16_t size, FmxErr& err);
FMX_API uint16_t FM_CharacterStyle_GetFont(const void* self, FmxErr& err);
FMX_API uint16_t FM_CharacterStyle_GetFace(const void* self, FmxErr& err);
FMX_API uint16_t FM_CharacterStyle_GetSize(const void* self, FmxErr& err);
FMX_API void FM_CharacterStyle_SetColor(void* self, const FmxColor& color, FmxErr& err);
FMX_API const FmxColor* FM_CharacterStyle_GetColor(const void* self, FmxErr& err);
FMX_API FmxCharacterStyle* FM_CharacterStyle_operatorAS(void* self, const FmxCharacterStyle& rhs,
                                                        FmxErr& err);
FMX_API bool FM_CharacterStyle_operatorEQ(const void* self, const FmxCharacterStyle& rhs,
                                          FmxErr& err);
FMX_API bool FM_CharacterStyle_operatorNE(const void* self, const FmxCharacterStyle& rhs,
                                          FmxErr& err);
FMX_API void FM_CharacterStyle_Delete(void* self, FmxErr& err);

// ---- Typed values
FMX_API FmxData* FM_Data_Constructor1(FmxErr& err);
FMX_API void FM_Data_Delete(void* self, FmxErr& err);
FMX_API bool FM_Data_IsEmpty(const void* self, FmxErr& err);
FMX_API bool FM_Data_IsValid(const void* self, FmxErr& err);
FMX_API bool FM_Data_IsFindRequest(const void* self, FmxErr& err);
FMX_API void FM_Data_Clear(void* self, int32_t newNativeType, FmxErr& err);
FMX_API int32_t FM_Data_GetNativeType(const void* self, FmxErr& err);
FMX_API void FM_Data_ConvertData(void* self, int32_t nativeType, FmxErr& err);
FMX_API const FmxText* FM_Data_GetAsText(const void* self, FmxErr& err);
FMX_API const FmxFixPt* FM_Data_GetAsNumber(const void* self, FmxErr& err);
FMX_API const FmxDateTime* FM_Data_GetAsDate(const void* self, FmxErr& err);
FMX_API const FmxDateTime* FM_Data_GetAsTime(const void* self, FmxErr& err);
FMX_API const FmxDateTime* FM_Data_GetAsTimeStamp(const void* self, FmxErr& err);
FMX_API bool FM_Data_GetAsBoolean(const void* self, FmxErr& err);
FMX_API const FmxBinaryData* FM_Data_GetBinaryData(const void* self, FmxErr& err);
FMX_API const FmxLocale* FM_Data_GetLocale(const void* self, FmxErr& err);
FMX_API FmxErrcode FM_Data_SetAsText(void* self, const FmxText& textData,
                                     const FmxLocale& sourceLocale, int32_t nativeType,
                                     FmxErr& err);
FMX_API void FM_Data_SetAsNumber(void* self, const FmxFixPt& numericData, int32_t nativeType,
                                 FmxErr& err);
FMX_API void FM_Data_SetAsDate(void* self, const FmxDateTime& dateData, int32_t nativeType,
                               FmxErr& err);
FMX_API void FM_Data_SetAsTime(void* self, const FmxDateTime& timeData, int32_t nativeType,
                               FmxErr& err);
FMX_API void FM_Data_SetAsTimeStamp(void* self, const FmxDateTime& timeStampData,
                                    int32_t nativeType, FmxErr& err);
FMX_API void FM_Data_SetDateTime(void* self, const FmxDateTime& dateTimeData, int32_t dateTimeType,
                                 int32_t nativeType, FmxErr& err);
FMX_API void FM_Data_SetBinaryData(void* self, const FmxBinaryData& binaryData,
                                   bool forceBinaryNativeType, FmxErr& err);
FMX_API uint16_t FM_Data_GetPostscriptFontID(const void* self, const FmxText& fontPostscriptName,
                                             const FmxExprEnv& env, FmxErr& err);
FMX_API bool FM_Data_GetPostscriptFontInfo(const void* self, uint16_t font,
                                           FmxText& fontPostscriptName, const FmxExprEnv& env,
                                           FmxErr& err);

// ---- Value lists (function arguments)
FMX_API FmxDataVect* FM_DataVect_Constructor1(FmxErr& err);
FMX_API void FM_DataVect_Delete(void* self, FmxErr& err);
FMX_API uint32_t FM_DataVect_Size(const void* self, FmxErr& err);
FMX_API void FM_DataVect_Clear(void* self, FmxErr& err);
FMX_API bool FM_DataVect_IsEmpty(const void* self, FmxErr& err);
FMX_API void FM_DataVect_PushBack(void* self, const FmxData& data, FmxErr& err);
FMX_API FmxData* FM_DataVect_PopBack(void* self, FmxErr& err);
FMX_API const FmxData* FM_DataVect_At(const void* self, uint32_t position, FmxErr& err);
FMX_API const FmxText* FM_DataVect_AtAsText(const void* self, uint32_t position, FmxErr& err);
FMX_API const FmxFixPt* FM_DataVect_AtAsNumber(const void* self, uint32_t position, FmxErr& err);
FMX_API const FmxDateTime* FM_DataVect_AtAsDate(const void* self, uint32_t position, FmxErr& err);
FMX_API const FmxDateTime* FM_DataVect_AtAsTime(const void* self, uint32_t position, FmxErr& err);
FMX_API const FmxDateTime* FM_DataVect_AtAsTimeStamp(const void* self, uint32_t position,
                                                     FmxErr& err);
FMX_API bool FM_DataVect_AtAsBoolean(const void* self, uint32_t position, FmxErr& err);
FMX_API const FmxBinaryData* FM_DataVect_AtAsBinaryData(const void* self, uint32_t position,
                                                        FmxErr& err);

// ---- Row lists
FMX_API FmxRowVect* FM_RowVect_Constructor1(FmxErr& err);
FMX_API void FM_RowVect_Delete(void* self, FmxErr& err);
FMX_API uint32_t FM_RowVect_Size(const void* self, FmxErr& err);
FMX_API bool FM_RowVect_IsEmpty(const void* self, FmxErr& err);
FMX_API const FmxDataVect* FM_RowVect_At(const void* self, uint32_t position, FmxErr& err);

// ---- Calculation environment
FMX_API FmxExprEnv* FM_ExprEnv_Constructor1(FmxErr& err);
FMX_API void FM_ExprEnv_Delete(void* self, FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_Evaluate(const void* self, const FmxText& expression, FmxData& result,
                                       FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_EvaluateGetFunction(const void* self, int16_t functionValue,
                                                  FmxData& result, FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_EvaluateConvertToFileMakerPath(const void* self,
                                                             const FmxText& inPath,
                                                             int32_t inFormat, FmxText& outFMPath,
                                                             FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_EvaluateConvertFromFileMakerPath(const void* self,
                                                               const FmxText& inFMPath,
                                                               int32_t inFormat, FmxText& outPath,
                                                               FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_ExecuteFileSQL(const void* self, const FmxText& expression,
                                             const FmxText& filename, const FmxDataVect& parameters,
                                             FmxRowVect& result, FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_ExecuteFileSQLTextResult(const void* self, const FmxText& expression,
                                                       const FmxText& filename,
                                                       const FmxDataVect& parameters,
                                                       FmxData& result, uint16_t colSep,
                                                       uint16_t rowSep, FmxErr& err);
FMX_API uint64_t FM_ExprEnv_SessionID(const void* self, FmxErr& err);
FMX_API uint64_t FM_ExprEnv_FileID(const void* self, FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_RegisterExternalFunction(
    const FmxQuadChar& pluginId, int16_t functionId, const FmxText& functionName,
    const FmxText& functionPrototype, int16_t minArgs, int16_t maxArgs, uint32_t compatibleOnFlags,
    FmxExtPluginFn funcPtr, FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_RegisterExternalFunctionEx(
    const FmxQuadChar& pluginId, int16_t functionId, const FmxText& functionName,
    const FmxText& functionPrototype, const FmxText& functionDescription, int16_t minArgs,
    int16_t maxArgs, uint32_t compatibleOnFlags, FmxExtPluginFn funcPtr, FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_UnRegisterExternalFunction(const FmxQuadChar& pluginId,
                                                         int16_t functionId, FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_RegisterScriptStep(const FmxQuadChar& pluginId, int16_t scriptStepId,
                                                 const FmxText& scriptStepName,
                                                 const FmxText& scriptStepDefinition,
                                                 const FmxText& scriptStepDescription,
                                                 uint32_t compatibleOnFlags, FmxExtPluginFn funcPtr,
                                                 FmxErr& err);
FMX_API FmxErrcode FM_ExprEnv_UnRegisterScriptStep(const FmxQuadChar& pluginId,
                                                   int16_t scriptStepId, FmxErr& err);

// ---- Fixed-point numbers
FMX_API FmxFixPt* FM_FixPt_Constructor1(int32_t val, int32_t precision, FmxErr& err);
FMX_API FmxFixPt* FM_FixPt_Constructor2(int32_t val, const FmxFixPt& precisionExample, FmxErr& err);
FMX_API void FM_FixPt_Delete(void* self, FmxErr& err);
FMX_API void FM_FixPt_AssignInt(void* self, int32_t that, FmxErr& err);
FMX_API void FM_FixPt_AssignInt64(void* self, int64_t that, FmxErr& err);
FMX_API void FM_FixPt_AssignDouble(void* self, double that, FmxErr& err);
FMX_API void FM_FixPt_AssignFixPt(void* self, const FmxFixPt& that, FmxErr& err);
FMX_API bool FM_FixPt_operatorEQ(const void* self, const FmxFixPt& that, FmxErr& err);
FMX_API bool FM_FixPt_operatorNE(const void* self, const FmxFixPt& that, FmxErr& err);
FMX_API bool FM_FixPt_operatorLT(const void* self, const FmxFixPt& that, FmxErr& err);
FMX_API bool FM_FixPt_operatorLE(const void* self, const FmxFixPt& that, FmxErr& err);
FMX_API bool FM_FixPt_operatorGT(const void* self, const FmxFixPt& that, FmxErr& err);
FMX_API bool FM_FixPt_operatorGE(const void* self, const FmxFixPt& that, FmxErr& err);
FMX_API void FM_FixPt_Increment(void* self, int32_t n, FmxErr& err);
FMX_API void FM_FixPt_Increment64(void* self, int64_t n, FmxErr& err);
FMX_API void FM_FixPt_Decrement(void* self, int32_t n, FmxErr& err);
FMX_API void FM_FixPt_Decrement64(void* self, int64_t n, FmxErr& err);
FMX_API void FM_FixPt_Negate(void* self, FmxErr& err);
FMX_API int32_t FM_FixPt_GetPrecision(const void* self, FmxErr& err);
FMX_API void FM_FixPt_SetPrecision(void* self, int32_t precision, FmxErr& err);
FMX_API void FM_FixPt_Add(const void* self, const FmxFixPt& arg, FmxFixPt& result, FmxErr& err);
FMX_API void FM_FixPt_Subtract(const void* self, const FmxFixPt& arg, FmxFixPt& result,
                               FmxErr& err);
FMX_API void FM_FixPt_Multiply(const void* self, const FmxFixPt& arg, FmxFixPt& result,
                               FmxErr& err);
FMX_API FmxErrcode FM_FixPt_Divide(const void* self, const FmxFixPt& arg, FmxFixPt& result,
                                   FmxErr& err);
FMX_API bool FM_FixPt_AsBool(const void* self, FmxErr& err);
FMX_API int32_t FM_FixPt_AsLong(const void* self, FmxErr& err);
FMX_API int64_t FM_FixPt_AsLong64(const void* self, FmxErr& err);
FMX_API double FM_FixPt_AsFloat(const void* self, FmxErr& err);

// ---- Dates and times
FMX_API FmxDateTime* FM_DateTime_Constructor1(FmxErr& err);
FMX_API FmxDateTime* FM_DateTime_Constructor2(const uint16_t* dateString, uint32_t dateLength,
                                              const FmxLocale& intl, FmxErr& err);
FMX_API FmxDateTime* FM_DateTime_Constructor3(const FmxText& dateText, const FmxLocale& intl,
                                              FmxErr& err);
FMX_API void FM_DateTime_Delete(void* self, FmxErr& err);
FMX_API bool FM_DateTime_operatorEQ(const void* self, const FmxDateTime& that, FmxErr& err);
FMX_API bool FM_DateTime_operatorNE(const void* self, const FmxDateTime& that, FmxErr& err);
FMX_API bool FM_DateTime_IsLeapYear(const void* self, FmxErr& err);
FMX_API int16_t FM_DateTime_DayOfWeek(const void* self, FmxErr& err);
FMX_API int16_t FM_DateTime_DayOfYear(const void* self, FmxErr& err);
FMX_API int16_t FM_DateTime_WeekOfYear(const void* self, FmxErr& err);
FMX_API void FM_DateTime_Now(void* self, FmxErr& err);
FMX_API void FM_DateTime_SetDate(void* self, const FmxDateTime& datetime, FmxErr& err);
FMX_API FmxErrcode FM_DateTime_SetNormalizedDate1(void* self, int16_t month, int16_t day,
                                                  int16_t year, FmxErr& err);
FMX_API FmxErrcode FM_DateTime_SetNormalizedDate2(void* self, const FmxFixPt& year,
                                                  const FmxFixPt& month, const FmxFixPt& day,
                                                  FmxErr& err);
FMX_API void FM_DateTime_SetDaysSinceEpoch(void* self, int64_t days, FmxErr& err);
FMX_API void FM_DateTime_SetTime(void* self, const FmxDateTime& datetime, FmxErr& err);
FMX_API FmxErrcode FM_DateTime_SetNormalizedTime1(void* self, int64_t hour, int16_t minute,
                                                  int16_t sec, int32_t usec, FmxErr& err);
FMX_API FmxErrcode FM_DateTime_SetNormalizedTime2(void* self, const FmxFixPt& hour,
                                                  const FmxFixPt& minute, const FmxFixPt& sec,
                                                  FmxErr& err);
FMX_API void FM_DateTime_SetSecsSinceMidnight(void* self, const FmxFixPt& secs, FmxErr& err);
FMX_API void FM_DateTime_SetSecondsSinceEpoch(void* self, const FmxFixPt& seconds, FmxErr& err);
FMX_API int16_t FM_DateTime_GetYear(const void* self, FmxErr& err);
FMX_API int16_t FM_DateTime_GetMonth(const void* self, FmxErr& err);
FMX_API int16_t FM_DateTime_GetDay(const void* self, FmxErr& err);
FMX_API int32_t FM_DateTime_GetDaysSinceEpoch(const void* self, FmxErr& err);
FMX_API int32_t FM_DateTime_GetHour(const void* self, FmxErr& err);
FMX_API int16_t FM_DateTime_GetMinute(const void* self, FmxErr& err);
FMX_API int16_t FM_DateTime_GetSec(const void* self, FmxErr& err);
FMX_API int32_t FM_DateTime_GetUSec(const void* self, FmxErr& err);
FMX_API void FM_DateTime_GetSeconds(const void* self, FmxFixPt& results, FmxErr& err);
FMX_API void FM_DateTime_GetSecsSinceMidnight(const void* self, FmxFixPt& results, FmxErr& err);
FMX_API void FM_DateTime_GetSecondsSinceEpoch(const void* self, FmxFixPt& results, FmxErr& err);

// ---- Container contents
FMX_API FmxBinaryData* FM_BinaryData_Constructor1(FmxErr& err);
FMX_API FmxBinaryData* FM_BinaryData_Constructor2(const FmxBinaryData& sourceData, FmxErr& err);
FMX_API FmxBinaryData* FM_BinaryData_Constructor3(const FmxText& name, uint32_t amount,
                                                  void* buffer, FmxErr& err);
FMX_API FmxBinaryData* FM_BinaryData_Constructor4(const FmxText& name, uint32_t* context,
                                                  FmxErr& err);
FMX_API void FM_BinaryData_Delete(void* self, FmxErr& err);
FMX_API FmxBinaryData* FM_BinaryData_operatorAS(void* self, const FmxBinaryData& source,
                                                FmxErr& err);
FMX_API bool FM_BinaryData_operatorEQ(const void* self, const FmxBinaryData& compareData,
                                      FmxErr& err);
FMX_API bool FM_BinaryData_operatorNE(const void* self, const FmxBinaryData& compareData,
                                      FmxErr& err);
FMX_API int32_t FM_BinaryData_GetCount(const void* self, FmxErr& err);
FMX_API int32_t FM_BinaryData_GetIndex(const void* self, const FmxQuadChar& dataType, FmxErr& err);
FMX_API uint32_t FM_BinaryData_GetTotalSize(const void* self, FmxErr& err);
FMX_API void FM_BinaryData_GetType(const void* self, int32_t index, FmxQuadChar& dataType,
                                   FmxErr& err);
FMX_API uint32_t FM_BinaryData_GetSize(const void* self, int32_t index, FmxErr& err);
FMX_API FmxErrcode FM_BinaryData_GetData(const void* self, int32_t index, uint32_t offset,
                                         uint32_t amount, void* buffer, FmxErr& err);
FMX_API FmxErrcode FM_BinaryData_Add(void* self, const FmxQuadChar& dataType, uint32_t amount,
                                     void* buffer, FmxErr& err);
FMX_API bool FM_BinaryData_Remove(void* self, const FmxQuadChar& dataType, FmxErr& err);
FMX_API void FM_BinaryData_RemoveAll(void* self, FmxErr& err);
FMX_API FmxErrcode FM_BinaryData_GetFNAMData(const void* self, FmxText& filepathlist, FmxErr& err);
FMX_API FmxErrcode FM_BinaryData_AddFNAMData(void* self, const FmxText& filepathlist, FmxErr& err);
FMX_API FmxErrcode FM_BinaryData_GetSIZEData(const void* self, int16_t& width, int16_t& height,
                                             FmxErr& err);
FMX_API FmxErrcode FM_BinaryData_AddSIZEData(void* self, int16_t width, int16_t height,
                                             FmxErr& err);
FMX_API FmxErrcode FM_BinaryData_AddBegin(void* self, const FmxQuadChar& dataType,
                                          uint32_t* context, FmxErr& err);
FMX_API FmxErrcode FM_BinaryData_AddAppend(void* self, uint32_t context, uint32_t amount,
                                           void* buffer, FmxErr& err);
FMX_API FmxErrcode FM_BinaryData_AddFinish(void* self, uint32_t context, FmxErr& err);
}  // extern "C"
