// VFile_Unmount( mountPath ): disconnects a network volume ("Z:" or "Z:\"), even with files open
// on it. Needs no licence: a volume can always be let go.
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/result.h"
#include "shell/value_conversion.h"

namespace {

void Unmount(const fmlib::FunctionCall& call) {
    const std::shared_ptr<const slib::String> mountPath =
        fmlib::ToFoundationString(fmlib::DataVectAtAsText(call.args, 0));
    slib::FileManager().unmountVolume(*mountPath);
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_Unmount(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                         FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kNotChecked,
                                         fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Unmount);
}
