// The emulated host's control interface: what fmhost.exe and the tests use to configure the
// host inside FMWrapper.dll, load plug-ins, inject faults and read the registration log.
// Exported by FMWrapper.dll (libFMWrapper.so on Linux) beside the plug-in interface; plain C,
// wchar_t strings: UTF-16 on Windows, UTF-32 on Linux.
//
// Calculations are run through the plug-in interface itself: an environment from
// FM_ExprEnv_Constructor1 that nobody filled evaluates in the host's own context.
#pragma once

#include <cstdint>

// Linux exports through the library's version script.
#if defined(FMHOST_CONTROL_EXPORTS) && defined(_WIN32)
#define FMHOST_CONTROL_API __declspec(dllexport)
#else
#define FMHOST_CONTROL_API
#endif

extern "C" {

enum : int32_t {
    // Get(FilePath) answers: a local database, none (error 100), a database on a network host.
    kFmhostFileLocal = 0,
    kFmhostFileNone = 1,
    kFmhostFileNetwork = 2,
};

enum : int32_t {
    kFmhostPluginEnabled = 0,
    kFmhostPluginRefused = 1,
    kFmhostPluginNoEntryPoint = 2,
    kFmhostPluginNotLoaded = 3,
    kFmhostPluginUnloaded = 4,
};

enum : int32_t {
    kFmhostFaultFromNow = 0,           // the Nth call counted from arming, once
    kFmhostFaultEachFunctionCall = 1,  // the Nth call of every plug-in function call
};

enum : int32_t {
    kFmhostRegisterFunction = 0,
    kFmhostUnregisterFunction = 1,
    kFmhostRegisterScriptStep = 2,
    kFmhostUnregisterScriptStep = 3,
};

// One registered function or one register / unregister call. Texts are cut to fit.
struct FmhostRegistration {
    int32_t kind;
    char pluginId[5];  // four characters and a zero
    int16_t functionId;
    int16_t minArgs;
    int16_t maxArgs;
    uint32_t flags;
    int16_t result;
    int16_t injected;  // 1 when the result came from an injected fault
    wchar_t name[128];
    wchar_t prototype[512];
};

struct FmhostPlugin;

// Default settings, session 1 alone (no globals), no faults, an empty registration log.
FMHOST_CONTROL_API void FMHost_Reset(void);
// Sessions, as FileMaker Server keeps one per client: calculations run in the current one, which
// FMHost_UseSession chooses (starting session `id` when it is not open); -1 for id 0. Only
// between calculations.
FMHOST_CONTROL_API int32_t FMHost_UseSession(uint64_t id);
// Forgets session `id` and its globals (the current one goes on afresh under the same id): 1,
// or 0 when it is not open. The plug-ins learn of it through FMHost_SendSessionShutdown.
FMHOST_CONTROL_API int32_t FMHost_EndSession(uint64_t id);
FMHOST_CONTROL_API void FMHost_SetApplicationVersion(const wchar_t* version);
// kFmhostFileLocal: `location` is a path of this system (made absolute here); kFmhostFileNetwork: a
// URL such as fmnet:/host/Solution.fmp12 or fmp://host/Solution.fmp12. Returns 0, or -1 when
// `location` is missing or the mode unknown.
FMHOST_CONTROL_API int32_t FMHost_SetFile(int32_t mode, const wchar_t* location);
// What Get(FilePath) answers now (host syntax); returns its length, writes at most capacity-1
// units and a zero.
FMHOST_CONTROL_API uint32_t FMHost_GetFilePath(wchar_t* buffer, uint32_t capacity);

// n == 0 or code == 0 disarms. Codes are error-slot codes (1 memory, 2 other).
FMHOST_CONTROL_API void FMHost_FailCall(uint32_t n, int32_t code, int32_t mode);
// error == 0 removes the fault.
FMHOST_CONTROL_API void FMHost_FailRegistration(int16_t functionId, int16_t error);
FMHOST_CONTROL_API void FMHost_FailFilePath(int16_t error);

// Never null: the handle reports the state and keeps what the plug-in answered.
FMHOST_CONTROL_API FmhostPlugin* FMHost_LoadPlugin(const wchar_t* path, int16_t extnVersion,
                                                   uint8_t applicationKind);
FMHOST_CONTROL_API int32_t FMHost_PluginState(const FmhostPlugin* plugin);
FMHOST_CONTROL_API uint32_t FMHost_PluginSystemError(const FmhostPlugin* plugin);
FMHOST_CONTROL_API int32_t FMHost_PluginInitSent(const FmhostPlugin* plugin);
FMHOST_CONTROL_API int64_t FMHost_PluginInitResult(const FmhostPlugin* plugin);
FMHOST_CONTROL_API uint32_t FMHost_PluginPurged(const FmhostPlugin* plugin);
// stringId: 128 name, 129 description, 131 options. Same buffer rule as FMHost_GetFilePath.
FMHOST_CONTROL_API uint32_t FMHost_PluginString(const FmhostPlugin* plugin, int32_t stringId,
                                                wchar_t* buffer, uint32_t capacity);
// 1 when sent, 0 when the plug-in did not ask for the message.
FMHOST_CONTROL_API int32_t FMHost_SendIdle(FmhostPlugin* plugin, uint8_t level);
FMHOST_CONTROL_API int32_t FMHost_SendPreferences(FmhostPlugin* plugin);
// File shutdown and session shutdown for session `id`: 1 when sent.
FMHOST_CONTROL_API int32_t FMHost_SendSessionShutdown(FmhostPlugin* plugin, uint64_t id);
// Sends what is due before unloading, unloads, and frees the handle.
FMHOST_CONTROL_API void FMHost_UnloadPlugin(FmhostPlugin* plugin);

FMHOST_CONTROL_API uint32_t FMHost_FunctionCount(void);
FMHOST_CONTROL_API int32_t FMHost_FunctionAt(uint32_t index, FmhostRegistration* out);
FMHOST_CONTROL_API uint32_t FMHost_RegistrationLogSize(void);
FMHOST_CONTROL_API int32_t FMHost_RegistrationLogAt(uint32_t index, FmhostRegistration* out);
FMHOST_CONTROL_API void FMHost_ClearRegistrationLog(void);

}  // extern "C"
