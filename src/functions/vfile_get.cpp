// VFile_Get( selector { ; path } { ; parameter } ): the last error, facts about a value, or an
// attribute or path form of an item. Only the last-error selectors are implemented in this
// build; the others fail with -4 after their argument checks.
#include "functions/handlers.h"
#include "functions/not_implemented.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/keyword_lookup.h"
#include "shell/last_error.h"
#include "shell/last_error_expression.h"

namespace {

const char* const kOwnSelectors[] = {"lastError",     "lastErrorMessage", "type",
                                     "picture-width", "picture-height",   "analyze-container",
                                     "picture-pixels"};
enum OwnSelector { kLastError = 0, kLastErrorMessage = 1 };

void Get(const fmlib::FunctionCall& call) {
    const int32_t selector =
        fmlib::LookupKeyword(fmlib::DataVectAtAsText(call.args, 0), kOwnSelectors);
    switch (selector) {
        case kLastError:
            fmlib::EvaluateInto(fmlib::kReadLastErrorExpression, call.env, call.result);
            return;
        case kLastErrorMessage:
            fmlib::EvaluateInto(fmlib::kReadLastErrorMessageExpression, call.env, call.result);
            return;
        case -1:
            // An item selector: the path argument is checked before anything else happens.
            licensing::CheckLicence();
            fmlib::RequireTextParameter(call.args, 1);
            functions::ThrowNotImplemented();
        default:
            licensing::CheckLicence();
            functions::ThrowNotImplemented();
    }
}

}  // namespace

FmxErrcode VFile_Get(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                     FmxData& result) {
    // The licence is checked per selector: reading the last error never needs it.
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kNotChecked,
                                         fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Get);
}
