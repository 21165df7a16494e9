// VFile_Open( path { ; applicationPath } ): opens an item with its default program, or with the
// given one. The prototype shows only the path; the second is accepted all the same.
// The operation has not landed in this build: after the argument checks it fails with -4.
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "functions/handlers.h"
#include "functions/not_implemented.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"

FmxErrcode VFile_Open(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                      FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result},
                                 [](const fmlib::FunctionCall& call) {
                                     fmlib::RequireTextParameter(call.args, 0);
                                     const uint32_t count = fmlib::DataVectSize(call.args);
                                     if (count > 2) {
                                         slib::Throw(slib::kBadParameter, "Too many parameters");
                                     }
                                     if (count == 2) {
                                         fmlib::RequireTextParameter(call.args, 1);
                                     }
                                     functions::ThrowNotImplemented();
                                 });
}
