// VFile_New( path { ; itemKind } ): creates a folder (the default) or a file.
// The operation has not landed in this build: after the argument checks it fails with -4.
#include "functions/handlers.h"
#include "functions/not_implemented.h"
#include "shell/call_frame.h"

FmxErrcode VFile_New(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                     FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kStored};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result},
                                 [](const fmlib::FunctionCall& call) {
                                     fmlib::RequireTextParameter(call.args, 0);
                                     functions::ThrowNotImplemented();
                                 });
}
