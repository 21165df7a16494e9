// The record the host passes to the plug-in's FMExternCallProc for every lifecycle message.
// It is packed: entryPoint sits unaligned, and every later field depends on where. The host on
// Windows is an MSVC build with a 16-bit unusedID (entryPoint at 4, 72 bytes); the SDK's other
// 64-bit compilers, Linux's included, make it 32-bit (entryPoint at 6, 74 bytes).
#pragma once

#include <cstddef>
#include <cstdint>

#include "fmx_functions.h"

extern "C" {

typedef FmxErrcode (*FmxStartScriptFn)(const FmxText* fileName, const FmxText* scriptName,
                                       uint8_t control, const FmxData* parameter);
typedef FmxErrcode (*FmxCurrentEnvFn)(FmxExprEnv* env);

#if defined(_WIN32)
typedef int16_t FmxUnusedId;
#else
typedef int32_t FmxUnusedId;
#endif

#pragma pack(push, 1)
struct FmxExternCallRecord {
    int16_t extnVersion;
    FmxUnusedId unusedID;
    void (*entryPoint)(FmxExternCallRecord*);
    char unusedFlag;
    uint8_t whichCall;
    char unsafeCalls;
    uint8_t parm1;
    uint64_t parm2;
    uint64_t parm3;
    uint64_t instanceID;
    uint64_t result;
    uint64_t unused;
    FmxStartScriptFn cStartScript;
    FmxCurrentEnvFn cCurrentEnv;
};
#pragma pack(pop)

typedef void (*FmxExternCallProcFn)(FmxExternCallRecord*);

}  // extern "C"

// Every field after unusedID sits kFmxRecordShift bytes further on Linux than on Windows.
constexpr size_t kFmxRecordShift = sizeof(FmxUnusedId) - 2;
static_assert(offsetof(FmxExternCallRecord, extnVersion) == 0, "record layout");
static_assert(offsetof(FmxExternCallRecord, unusedID) == 2, "record layout");
static_assert(offsetof(FmxExternCallRecord, entryPoint) == 4 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, unusedFlag) == 12 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, whichCall) == 13 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, unsafeCalls) == 14 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, parm1) == 15 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, parm2) == 16 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, parm3) == 24 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, instanceID) == 32 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, result) == 40 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, unused) == 48 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, cStartScript) == 56 + kFmxRecordShift, "record layout");
static_assert(offsetof(FmxExternCallRecord, cCurrentEnv) == 64 + kFmxRecordShift, "record layout");
static_assert(sizeof(FmxExternCallRecord) == 72 + kFmxRecordShift, "record is 72 or 74 bytes");
#if defined(_WIN32)
static_assert(kFmxRecordShift == 0 && sizeof(FmxExternCallRecord) == 72, "Windows: 72 bytes");
#else
static_assert(kFmxRecordShift == 2 && sizeof(FmxExternCallRecord) == 74, "Linux: 74 bytes");
#endif
