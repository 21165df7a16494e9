// Calculation environments handed to plug-ins: which context an ExprEnv evaluates in, and the
// "current" context that the record's fill-environment callback hands out.
#pragma once

#include "core/eval_context.h"
#include "objects.h"

namespace fmwrapper {

// The env's own context, or the host's default context for one never filled.
fmhost::EvalContext& ContextOf(const FmxExprEnv& env);

// The context of the innermost plug-in function call running on this thread, or the host's
// default context outside any call.
fmhost::EvalContext& CurrentContext();

// Makes `context` the current one on this thread for the scope's lifetime.
class CurrentContextScope {
  public:
    explicit CurrentContextScope(fmhost::EvalContext& context);
    ~CurrentContextScope();
    CurrentContextScope(const CurrentContextScope&) = delete;
    CurrentContextScope& operator=(const CurrentContextScope&) = delete;

  private:
    fmhost::EvalContext* outer_;
};

}  // namespace fmwrapper
