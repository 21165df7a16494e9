// The engine's own functions whose arguments are all evaluated before the call. Let, If, Case,
// Get and Substitute need more than that and are handled by the parser and interpreter.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "core/calc_errors.h"
#include "core/character_style.h"
#include "core/eval_context.h"
#include "core/value.h"

namespace fmhost::calc {

using BuiltinImpl = ErrorCode (*)(EvalContext& context, const std::vector<Value>& args,
                                  Value& result);

struct Builtin {
    std::u16string_view name;
    int16_t minArgs;
    int16_t maxArgs;  // -1 = unlimited
    BuiltinImpl impl;
};

// Looked up without regard to case.
const Builtin* FindBuiltin(std::u16string_view name);
// Face bits of a style keyword of TextStyleAdd / TextStyleRemove (Plain, Bold, ...).
std::optional<FaceBits> FindStyleKeyword(std::u16string_view name);

}  // namespace fmhost::calc

namespace fmhost::calc {

// Replaces every occurrence of `search` (case-sensitive, left to right, not overlapping).
Text SubstituteText(const Text& source, const Text& search, const Text& replacement);

}  // namespace fmhost::calc
