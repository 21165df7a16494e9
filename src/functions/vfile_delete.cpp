// VFile_Delete( path ): deletes a file, or a folder with everything in it, permanently.
#include "bridge/path_context.h"
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/result.h"

namespace {

void Delete(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    const slib::String path = paths.pathArgument(call.args, 0);
    paths.refuseAnchorHolder(path,
                             "Cannot delete the folder of the database or a folder holding it");
    slib::FileManager().deleteItem(path);
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_Delete(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                        FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kStored};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Delete);
}
