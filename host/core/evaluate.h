// The calculation engine's entry point.
//
// A top-level evaluation gets a fresh set of $local variables. An evaluation started on the
// same thread while another one of the same session is running (a plug-in function calling
// back into the engine) shares that evaluation's locals. Several threads may evaluate in one
// session at the same time.
#pragma once

#include <string_view>

#include "core/calc_errors.h"
#include "core/eval_context.h"
#include "core/value.h"

namespace fmhost {

// Returns 0 and the calculation's value in `result`, or a calculation error number (syntax
// errors, unknown functions, wrong argument counts, the context's or a plug-in function's
// error), leaving `result` unchanged. Never throws.
ErrorCode Evaluate(std::u16string_view expression, EvalContext& context, Value& result) noexcept;

}  // namespace fmhost
