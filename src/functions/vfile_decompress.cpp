// VFile_DeCompress( sourcePath ; targetPath ): unpacks every entry of a zip archive into a folder.
#include "archive/zip_operations.h"
#include "bridge/path_context.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/result.h"

namespace {

void DeCompress(const fmlib::FunctionCall& call) {
    const auto [source, target] = bridge::PathContext(call.env).sourceAndTarget(call.args);
    archive::DecompressArchive(source, target);
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_DeCompress(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                            FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{2, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, DeCompress);
}
