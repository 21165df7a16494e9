#include "shell/last_error.h"

#include "shell/host_env.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/last_error_expression.h"

namespace fmlib {

FmxErrcode SetLastError(int16_t code, const std::string& message, const FmxExprEnv& env) {
    DataPtr scratch = NewData();
    return EvaluateInto(LastErrorExpression(code, message).c_str(), env, *scratch);
}

FmxErrcode EvaluateInto(const char* expression, const FmxExprEnv& env, FmxData& result) {
    TextPtr text = MakeNativeText(expression);
    return ExprEnvEvaluate(env, *text, result);
}

}  // namespace fmlib
