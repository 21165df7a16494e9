// VFile_Register( registrationCode ): this build is fully licensed, so every code is accepted.
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/licensing.h"
#include "shell/result.h"

FmxErrcode VFile_Register(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                          FmxData& result) {
    return fmlib::RunInBareFrame({functionId, env, args, result},
                                 [](const fmlib::FunctionCall& call) {
                                     fmlib::SetResultCode(call.result, licensing::Register());
                                 });
}
