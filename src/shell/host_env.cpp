#include "shell/host_env.h"

#include "shell/host_error.h"
#include "shell/newer_host_functions.h"

namespace fmlib {

FmxErrcode ExprEnvEvaluate(const FmxExprEnv& env, const FmxText& expression, FmxData& result) {
    return HostCall(FM_ExprEnv_Evaluate, &env, expression, result);
}

FmxErrcode ExprEnvRegisterExternalFunction(const FmxQuadChar& pluginId, int16_t functionId,
                                           const FmxText& name, const FmxText& prototype,
                                           int16_t minArgs, int16_t maxArgs, uint32_t flags,
                                           FmxExtPluginFn handler) {
    return HostCall(FM_ExprEnv_RegisterExternalFunction, pluginId, functionId, name, prototype,
                    minArgs, maxArgs, flags, handler);
}

FmxErrcode ExprEnvUnRegisterExternalFunction(const FmxQuadChar& pluginId, int16_t functionId) {
    return HostCall(FM_ExprEnv_UnRegisterExternalFunction, pluginId, functionId);
}

uint64_t ExprEnvSessionID(const FmxExprEnv& env) {
    const auto get = NewerHostFunction<decltype(&FM_ExprEnv_SessionID)>("FM_ExprEnv_SessionID",
                                                                        kSessionsVersion);
    return get != nullptr ? HostCall(get, &env) : 0;
}

}  // namespace fmlib
