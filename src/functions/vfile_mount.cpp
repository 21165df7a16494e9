// VFile_Mount( URL { ; mountPath } { ; username ; password } ): connects a network volume and
// answers its local path, such as "Z:\". An "smb://server/share" URL is taken as the UNC path
// "\\server\share".
#include "bridge/mount_arguments.h"
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/result.h"

namespace {

void Mount(const fmlib::FunctionCall& call) {
    const bridge::MountArguments mount = bridge::ReadMountArguments(call.args);
    const slib::FileManager files;
    const std::shared_ptr<const slib::String> local = files.mountVolume(
        *files.smbUrlToUncPath(*mount.url), mount.mountPath, mount.user, mount.password);
    fmlib::SetResultText(call.result, local->units());
}

}  // namespace

FmxErrcode VFile_Mount(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                       FmxData& result) {
    // No minimum in the frame: a call without a URL has a message of its own.
    constexpr fmlib::FramePolicy kPolicy{0, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Mount);
}
