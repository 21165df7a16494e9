// VFile_Set( selector ; path ; newValue ): changes an item attribute, or stages picture options
// for the next VFile_Copy. Not implemented in this build: after the argument checks it fails
// with -4.
#include "functions/handlers.h"
#include "functions/not_implemented.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/keyword_lookup.h"

namespace {

const char* const kOwnSelectors[] = {"convert", "rotate"};

void Set(const fmlib::FunctionCall& call) {
    if (fmlib::LookupKeyword(fmlib::DataVectAtAsText(call.args, 0), kOwnSelectors) < 0) {
        fmlib::RequireTextParameter(call.args, 1);
    }
    functions::ThrowNotImplemented();
}

}  // namespace

FmxErrcode VFile_Set(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                     FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{2, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Set);
}
