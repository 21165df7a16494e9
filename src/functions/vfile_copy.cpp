// VFile_Copy( sourcePath ; targetPath ): copies a file or a whole folder. With picture options
// staged by VFile_Set it converts the picture instead.
#include "bridge/path_context.h"
#include "bridge/staged_picture_options.h"
#include "foundation/file_manager.h"
#include "foundation/new_item_name.h"
#include "functions/handlers.h"
#include "functions/staged_picture_copy.h"
#include "shell/call_frame.h"
#include "shell/host_env.h"
#include "shell/result.h"

namespace {

void Copy(const fmlib::FunctionCall& call) {
    // Taken before anything can fail, so the options are gone whatever the copy's outcome.
    if (const auto staged = bridge::StagedPictureOptions::Take(fmlib::ExprEnvSessionID(call.env))) {
        functions::CopyPicture(call, *staged);
        return;
    }
    bridge::PathContext paths(call.env);
    const slib::String source = paths.pathArgument(call.args, 0);
    const slib::String target = paths.pathArgument(call.args, 1);
    // Into an existing folder the item keeps its own name: that is the name to be made.
    slib::RequireUsableNewItem(target);
    slib::RequireUsableNewItem(*slib::FileManager().transferTarget(source, target));
    slib::FileManager().copyItem(source, target);
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_Copy(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                      FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{2, fmlib::Licence::kChecked, fmlib::ZeroCode::kStored};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Copy);
}
