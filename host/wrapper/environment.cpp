#include "environment.h"

#include "host_runtime.h"

namespace fmwrapper {
namespace {

thread_local fmhost::EvalContext* tCurrent = nullptr;

}  // namespace

fmhost::EvalContext& ContextOf(const FmxExprEnv& env) {
    return env.context != nullptr ? *env.context : HostRuntime::Instance().DefaultContext();
}

fmhost::EvalContext& CurrentContext() {
    return tCurrent != nullptr ? *tCurrent : HostRuntime::Instance().DefaultContext();
}

CurrentContextScope::CurrentContextScope(fmhost::EvalContext& context) : outer_(tCurrent) {
    tCurrent = &context;
}

CurrentContextScope::~CurrentContextScope() {
    tCurrent = outer_;
}

}  // namespace fmwrapper
