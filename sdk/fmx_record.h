// The record the host passes to the plug-in's FMExternCallProc for every lifecycle message.
// It is packed: entryPoint sits unaligned at offset 4, and every later field depends on that.
#pragma once

#include <cstddef>
#include <cstdint>

#include "fmx_functions.h"

extern "C" {

typedef FmxErrcode (*FmxStartScriptFn)(const FmxText* fileName, const FmxText* scriptName,
                                       uint8_t control, const FmxData* parameter);
typedef FmxErrcode (*FmxCurrentEnvFn)(FmxExprEnv* env);

#pragma pack(push, 1)
struct FmxExternCallRecord {
    int16_t extnVersion;
    int16_t unusedID;
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

static_assert(offsetof(FmxExternCallRecord, extnVersion) == 0, "record layout");
static_assert(offsetof(FmxExternCallRecord, unusedID) == 2, "record layout");
static_assert(offsetof(FmxExternCallRecord, entryPoint) == 4, "record layout");
static_assert(offsetof(FmxExternCallRecord, unusedFlag) == 12, "record layout");
static_assert(offsetof(FmxExternCallRecord, whichCall) == 13, "record layout");
static_assert(offsetof(FmxExternCallRecord, unsafeCalls) == 14, "record layout");
static_assert(offsetof(FmxExternCallRecord, parm1) == 15, "record layout");
static_assert(offsetof(FmxExternCallRecord, parm2) == 16, "record layout");
static_assert(offsetof(FmxExternCallRecord, parm3) == 24, "record layout");
static_assert(offsetof(FmxExternCallRecord, instanceID) == 32, "record layout");
static_assert(offsetof(FmxExternCallRecord, result) == 40, "record layout");
static_assert(offsetof(FmxExternCallRecord, unused) == 48, "record layout");
static_assert(offsetof(FmxExternCallRecord, cStartScript) == 56, "record layout");
static_assert(offsetof(FmxExternCallRecord, cCurrentEnv) == 64, "record layout");
static_assert(sizeof(FmxExternCallRecord) == 72, "record is 72 bytes");
