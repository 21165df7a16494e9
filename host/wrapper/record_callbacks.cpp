#include "record_callbacks.h"

#include "core/calc_errors.h"
#include "environment.h"
#include "objects.h"

namespace fmwrapper {

constexpr FmxErrcode kErrScriptMissing = 104;

FmxErrcode StartScriptCallback(const FmxText*, const FmxText*, uint8_t, const FmxData*) {
    return kErrScriptMissing;
}

FmxErrcode CurrentEnvCallback(FmxExprEnv* env) {
    if (env == nullptr)
        return fmhost::kErrCalcGeneric;
    env->context = &CurrentContext();
    return 0;
}

}  // namespace fmwrapper
