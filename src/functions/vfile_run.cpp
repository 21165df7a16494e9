// VFile_Run( path { ; arguments } ): starts a program without waiting for it. Each line of the
// arguments text is one argument.
#include "bridge/path_context.h"
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/result.h"
#include "shell/value_conversion.h"

namespace {

void Run(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    const slib::String program = paths.pathArgument(call.args, 0);
    // The arguments are whatever the value reads as text: a number passes its digits.
    const std::shared_ptr<const slib::String> arguments =
        fmlib::DataVectSize(call.args) >= 2
            ? fmlib::ToFoundationString(fmlib::DataVectAtAsText(call.args, 1))
            : std::make_shared<const slib::String>();
    slib::FileManager().runApplication(program, *arguments);
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_Run(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                     FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Run);
}
