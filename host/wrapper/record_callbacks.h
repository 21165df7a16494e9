// The two host callbacks every extern-call record carries.
#pragma once

#include "fmx_record.h"

namespace fmwrapper {

// There are no scripts in this host: every request is answered "script missing" (104).
FmxErrcode StartScriptCallback(const FmxText* fileName, const FmxText* scriptName, uint8_t control,
                               const FmxData* parameter);

// Points a plug-in-made environment at the current calculation context (the innermost
// plug-in function call on this thread, or the host's default context).
FmxErrcode CurrentEnvCallback(FmxExprEnv* env);

}  // namespace fmwrapper
