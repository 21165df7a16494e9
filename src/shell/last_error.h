// Recording a failure in the host's last-error globals.
#pragma once

#include <cstdint>
#include <string>

#include "fmx_functions.h"

namespace fmlib {

// Evaluates LastErrorExpression in `env`. The host should never refuse it; when it does, this
// throws, so that the caller does not answer as if the globals described this failure.
void SetLastError(int16_t code, const std::string& message, const FmxExprEnv& env);

// Evaluates one of the read-back expressions into `result`.
FmxErrcode EvaluateInto(const char* expression, const FmxExprEnv& env, FmxData& result);

}  // namespace fmlib
