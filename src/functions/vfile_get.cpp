// VFile_Get( selector { ; path } { ; parameter } ): the last error, facts about a value, or an
// attribute or path form of an item.
#include "functions/get_selectors.h"
#include "functions/handlers.h"
#include "shell/host_data.h"
#include "shell/keyword_lookup.h"
#include "shell/last_error.h"
#include "shell/last_error_expression.h"

namespace {

const char* const kOwnSelectors[] = {"lastError",     "lastErrorMessage", "type",
                                     "picture-width", "picture-height",   "analyze-container",
                                     "picture-pixels"};

void Get(const fmlib::FunctionCall& call) {
    const int32_t selector =
        fmlib::LookupKeyword(fmlib::DataVectAtAsText(call.args, 0), kOwnSelectors);
    switch (selector) {
        case functions::kGetLastError:
            fmlib::EvaluateInto(fmlib::kReadLastErrorExpression, call.env, call.result);
            return;
        case functions::kGetLastErrorMessage:
            fmlib::EvaluateInto(fmlib::kReadLastErrorMessageExpression, call.env, call.result);
            return;
        case functions::kGetPicturePixels:
            licensing::CheckLicence();
            functions::GetPicturePixels(call);
            return;
        case -1:
            licensing::CheckLicence();
            functions::GetItemAttribute(call);
            return;
        default:
            licensing::CheckLicence();
            functions::GetValueFact(call, static_cast<functions::GetOwnSelector>(selector));
            return;
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
