// VFile_Open( path { ; applicationPath } ): opens an item with its default program, or with the
// given one. The prototype shows only the path; the second is accepted all the same.
#include "bridge/path_context.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/arguments.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/result.h"

namespace {

void Open(const fmlib::FunctionCall& call) {
    fmlib::RequireTextParameter(call.args, 0);
    // Like every path-taking call, this one asks the host for its anchor before judging the
    // argument count.
    bridge::PathContext paths(call.env);
    paths.anchor();
    const uint32_t count = fmlib::DataVectSize(call.args);
    if (count > 2) {
        slib::Throw(slib::kBadParameter, "Too many parameters");
    }
    const slib::String file = paths.pathArgument(call.args, 0);
    const slib::FileManager files;
    if (count == 2) {
        files.openFileWithApplication(file, paths.pathArgument(call.args, 1));
    } else {
        files.openFile(file);
    }
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_Open(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                      FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Open);
}
