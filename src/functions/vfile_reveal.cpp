// VFile_Reveal( path ): opens a folder window on the item's folder with the item selected.
#include "bridge/path_context.h"
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/result.h"

namespace {

void Reveal(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    slib::FileManager().revealItem(paths.pathArgument(call.args, 0));
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_Reveal(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                        FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Reveal);
}
