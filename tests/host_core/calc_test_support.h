// A host context for engine tests: a session, a registry and Get() answers.
#pragma once

#include <map>
#include <string>

#include "core/evaluate.h"
#include "core/function_registry.h"
#include "core/session.h"

namespace fmhost::calc_test {

class TestContext : public EvalContext {
  public:
    Session& GetSession() override { return *session; }
    const FunctionRegistry* Functions() const override { return &registry; }
    ErrorCode GetValue(GetFunction function, Value& result) override {
        auto found = getValues.find(function);
        if (found == getValues.end())
            return kErrNoDatabase;
        result = Value::FromText(found->second);
        return kNoError;
    }

    Session ownSession;
    Session* session = &ownSession;
    FunctionRegistry registry;
    std::map<GetFunction, std::u16string> getValues;
};

// The value as UTF-8 text, or "error N".
inline std::string EvalToText(EvalContext& context, const std::u16string& expression) {
    Value result;
    const ErrorCode error = Evaluate(expression, context, result);
    if (error != kNoError)
        return "error " + std::to_string(error);
    return result.AsText().ToUtf8();
}

inline ErrorCode EvalError(EvalContext& context, const std::u16string& expression) {
    Value result;
    return Evaluate(expression, context, result);
}

}  // namespace fmhost::calc_test
