// The record the host passes to the plug-in's FMExternCallProc for every lifecycle message.
// It is packed: entryPoint sits unaligned right after unusedID, and every later field depends on
// that. The Windows host is an MSVC build with a 16-bit unusedID (entryPoint at 4, 72 bytes);
// the Linux host is built by GCC, whose branch of the interface makes it 32-bit (entryPoint at 6,
// 74 bytes).
#pragma once

#include <cstddef>
#include <cstdint>

#include "fmx_functions.h"

#if defined(_WIN32)
typedef int16_t FmxUnusedId;
constexpr size_t kFmxRecordSize = 72;
#else
typedef int32_t FmxUnusedId;
constexpr size_t kFmxRecordSize = 74;
#endif

extern "C" {

typedef FmxErrcode (*FmxStartScriptFn)(const FmxText* fileName, const FmxText* scriptName,
                                       uint8_t control, const FmxData* parameter);
typedef FmxErrcode (*FmxCurrentEnvFn)(FmxExprEnv* env);

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

// Every field after unusedID moves with its width: 0 on Windows, 2 on Linux.
constexpr size_t kFmxWidening = sizeof(FmxUnusedId) - sizeof(int16_t);
static_assert(kFmxRecordSize == 72 + kFmxWidening, "record size follows the unused id's width");
static_assert(offsetof(FmxExternCallRecord, extnVersion) == 0, "record layout");
static_assert(offsetof(FmxExternCallRecord, unusedID) == 2, "record layout");
static_assert(offsetof(FmxExternCallRecord, entryPoint) == 4 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, unusedFlag) == 12 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, whichCall) == 13 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, unsafeCalls) == 14 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, parm1) == 15 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, parm2) == 16 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, parm3) == 24 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, instanceID) == 32 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, result) == 40 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, unused) == 48 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, cStartScript) == 56 + kFmxWidening, "record layout");
static_assert(offsetof(FmxExternCallRecord, cCurrentEnv) == 64 + kFmxWidening, "record layout");
static_assert(sizeof(FmxExternCallRecord) == kFmxRecordSize, "record size");
