// The three ways a failed call is reported: a code in the result plus the two last-error
// globals. Each may itself raise if the host fails, or refuses the globals, while the report is
// being made.
#pragma once

#include <exception>

#include "fmx_functions.h"
#include "foundation/exception.h"

namespace fmlib {

// The error's code goes through the reportable filter (anything unlisted becomes 2400). The
// result is set unless `alwaysSetResult` is false and the code is 0.
void ReportFoundationError(const slib::Exception& exception, const FmxExprEnv& env, FmxData& result,
                           bool alwaysSetResult);
// 2400 with the exception's own text.
void ReportStandardError(const std::exception& exception, const FmxExprEnv& env, FmxData& result);
// 2400 with "Unknown fatal error occured".
void ReportUnknownError(const FmxExprEnv& env, FmxData& result);

}  // namespace fmlib
