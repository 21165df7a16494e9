// VFile_New( path { ; itemKind } ): creates a folder (the default) or an empty file.
#include "bridge/item_kinds.h"
#include "bridge/path_context.h"
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/keyword_lookup.h"
#include "shell/result.h"

namespace {

void New(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    const slib::String path = paths.newItemArgument(call.args, 0);
    // An omitted kind makes a folder, not a file.
    int32_t kind = slib::CreateKind::kFolder;
    if (fmlib::DataVectSize(call.args) >= 2) {
        kind =
            fmlib::LookupKeyword(fmlib::DataVectAtAsText(call.args, 1), bridge::kItemKindKeywords);
    }
    slib::FileManager().createItem(path, kind);
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_New(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                     FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kStored};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, New);
}
