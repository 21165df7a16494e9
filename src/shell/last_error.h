// Recording a failure in the host's last-error globals.
#pragma once

#include <cstdint>
#include <string>

#include "fmx_functions.h"

namespace fmlib {

// Evaluates LastErrorExpression in `env` (8-bit text, host encoding 0) into a scratch value and
// returns the host's calculation error, which callers ignore on purpose.
FmxErrcode SetLastError(int16_t code, const std::string& message, const FmxExprEnv& env);

// Evaluates one of the read-back expressions into `result`.
FmxErrcode EvaluateInto(const char* expression, const FmxExprEnv& env, FmxData& result);

}  // namespace fmlib
