#include "external_call.h"

#include "environment.h"
#include "fault_injection.h"
#include "objects.h"

namespace fmwrapper {

fmhost::ExternalFunction::Callable MakeExternalCall(FmxExtPluginFn callback, int16_t functionId) {
    return
        [callback, functionId](fmhost::EvalContext& context, const std::vector<fmhost::Value>& args,
                               fmhost::Value& result) -> fmhost::ErrorCode {
            FmxDataVect parms;
            parms.items.reserve(args.size());
            for (const fmhost::Value& arg : args)
                parms.items.push_back(std::make_unique<FmxData>(arg));
            FmxData out;
            FmxExprEnv env{&context};

            FmxErrcode error;
            {
                CurrentContextScope current(context);
                faults::FunctionCallScope call;
                error = callback(functionId, env, parms, out);
            }
            // A plug-in error fails the calculation with that number.
            if (error != 0)
                return error;
            result = std::move(out.value);
            return fmhost::kNoError;
        };
}

}  // namespace fmwrapper
