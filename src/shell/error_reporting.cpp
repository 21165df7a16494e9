#include "shell/error_reporting.h"

#include <cstdint>
#include <string>

#include "foundation/error_codes.h"
#include "foundation/reportable_code.h"
#include "shell/last_error.h"
#include "shell/result.h"

namespace fmlib {

namespace {

void Report(int32_t code, const std::string& message, const FmxExprEnv& env, FmxData& result,
            bool setResult) {
    if (setResult) {
        SetResultCode(result, code);
    }
    SetLastError(static_cast<int16_t>(code), message, env);
}

}  // namespace

void ReportFoundationError(const slib::Exception& exception, const FmxExprEnv& env, FmxData& result,
                           bool alwaysSetResult) {
    const int32_t code = slib::ReportableCode(exception.error()->code());
    Report(code, exception.message(), env, result, alwaysSetResult || code != slib::kNoError);
}

void ReportStandardError(const std::exception& exception, const FmxExprEnv& env, FmxData& result) {
    Report(slib::kUnclassified, exception.what(), env, result, true);
}

void ReportUnknownError(const FmxExprEnv& env, FmxData& result) {
    Report(slib::kUnclassified, "Unknown fatal error occured", env, result, true);
}

}  // namespace fmlib
