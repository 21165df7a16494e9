// Wrappers of the host's calculation-environment calls (one per FM_ExprEnv_* call used).
#pragma once

#include <cstdint>

#include "fmx_functions.h"

namespace fmlib {

// Returns the host's calculation error (0 = evaluated).
FmxErrcode ExprEnvEvaluate(const FmxExprEnv& env, const FmxText& expression, FmxData& result);
FmxErrcode ExprEnvRegisterExternalFunction(const FmxQuadChar& pluginId, int16_t functionId,
                                           const FmxText& name, const FmxText& prototype,
                                           int16_t minArgs, int16_t maxArgs, uint32_t flags,
                                           FmxExtPluginFn handler);
FmxErrcode ExprEnvUnRegisterExternalFunction(const FmxQuadChar& pluginId, int16_t functionId);
// The host session the calculation runs in (one per client on FileMaker Server); 0 on a host too
// old to name sessions.
uint64_t ExprEnvSessionID(const FmxExprEnv& env);

}  // namespace fmlib
