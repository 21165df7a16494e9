// VFile_Mount( URL { ; mountPath } { ; username ; password } ): connects a network volume.
// The operation has not landed in this build: after the argument checks it fails with -4.
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "functions/handlers.h"
#include "functions/not_implemented.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"

FmxErrcode VFile_Mount(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                       FmxData& result) {
    // No minimum in the frame: a call without a URL has a message of its own.
    constexpr fmlib::FramePolicy kPolicy{0, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result},
                                 [](const fmlib::FunctionCall& call) {
                                     if (fmlib::DataVectSize(call.args) == 0) {
                                         slib::Throw(slib::kBadParameter, "No URL to mount");
                                     }
                                     functions::ThrowNotImplemented();
                                 });
}
