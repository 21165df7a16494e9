// VFile_Choose( itemKind { ; name ; value } ... ): the system's file, folder and save dialogs.
// The operation has not landed in this build: after the argument checks it fails with -4.
#include "functions/handlers.h"
#include "functions/not_implemented.h"
#include "shell/call_frame.h"

FmxErrcode VFile_Choose(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                        FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(
        kPolicy, {functionId, env, args, result},
        [](const fmlib::FunctionCall&) { functions::ThrowNotImplemented(); });
}
