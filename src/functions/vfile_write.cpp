// VFile_Write( path ; data { ; startIndex } { ; encoding } ): writes text or a container's file
// into a file: replacing it without a startIndex, in place from one with it.
#include "bridge/content_arguments.h"
#include "bridge/path_context.h"
#include "bridge/write_contents.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/result.h"

namespace {

void Write(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    const slib::String path = paths.newItemArgument(call.args, 0);
    const bridge::WriteRequest request = bridge::ParseWriteArguments(call.args);
    const slib::FileManager manager;
    if (manager.getItemKind(path) == slib::ItemKind::kFolder) {
        slib::Throw(slib::kItemNotFound, "Cannot write data to folder");
    }
    // Converted in full before the file is touched: a refused conversion changes nothing.
    const std::shared_ptr<const slib::Data> bytes =
        bridge::BytesToWrite(fmlib::DataVectAt(call.args, 1), request.encoding, paths, call.env);
    if (request.startIndex) {
        manager.writeFile(path, *bytes, slib::FilePosition::FromIndex(*request.startIndex));
    } else {
        manager.replaceFile(path, *bytes);
    }
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_Write(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                       FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{2, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Write);
}
