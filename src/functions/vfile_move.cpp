// VFile_Move( sourcePath ; targetPath ): renames an item, or moves it into an existing folder.
#include "bridge/path_context.h"
#include "foundation/file_manager.h"
#include "foundation/new_item_name.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/result.h"

namespace {

void Move(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    const slib::String source = paths.pathArgument(call.args, 0);
    const slib::String target = paths.pathArgument(call.args, 1);
    paths.refuseAnchorHolder(source,
                             "Cannot move the folder of the database or a folder holding it");
    // Into an existing folder the item keeps its own name: that is the name to be made.
    slib::RequireUsableNewItem(target);
    slib::RequireUsableNewItem(*slib::FileManager().transferTarget(source, target));
    slib::FileManager().moveItem(source, target);
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_Move(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                      FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{2, fmlib::Licence::kChecked, fmlib::ZeroCode::kStored};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Move);
}
