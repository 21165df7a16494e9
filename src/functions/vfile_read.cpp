// VFile_Read( path { ; startIndex { ; maxLength } } { ; encoding } ): a file's contents as text,
// picture or file, or a folder's entry names.
#include "bridge/content_arguments.h"
#include "bridge/path_context.h"
#include "bridge/read_contents.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"

namespace {

void Read(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    const slib::String path = paths.pathArgument(call.args, 0);
    const bridge::ReadRequest request = bridge::ParseReadArguments(call.args);
    switch (slib::FileManager().getItemKind(path)) {
        case slib::ItemKind::kFolder:
            bridge::StoreFolderListing(path, call.result);
            return;
        case slib::ItemKind::kFile:
            bridge::StoreFileContents(path, request, call.result, call.env);
            return;
        default:
            slib::Throw(slib::kItemNotFound, "File to read does not exist");
    }
}

}  // namespace

FmxErrcode VFile_Read(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                      FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Read);
}
