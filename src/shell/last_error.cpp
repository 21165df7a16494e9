#include "shell/last_error.h"

#include <stdexcept>

#include "shell/host_env.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/last_error_expression.h"

namespace fmlib {

void SetLastError(int16_t code, const std::string& message, const FmxExprEnv& env) {
    DataPtr scratch = NewData();
    // Unicode, not the host's 8-bit encoding: a message quotes names in any script.
    const TextPtr expression = MakeText(LastErrorExpression(code, message));
    if (ExprEnvEvaluate(env, *expression, *scratch) != 0) {
        throw std::runtime_error("The host refused to record the last error");
    }
}

FmxErrcode EvaluateInto(const char* expression, const FmxExprEnv& env, FmxData& result) {
    TextPtr text = MakeNativeText(expression);
    return ExprEnvEvaluate(env, *text, result);
}

}  // namespace fmlib
