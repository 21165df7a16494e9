// The operators of the language applied to values.
#pragma once

#include "core/calc/ast.h"
#include "core/value.h"

namespace fmhost::calc {

// Arithmetic (dates, times and timestamps keep their type where the host does: date + days,
// time + seconds, timestamp + seconds), concatenation, comparison and logic. Comparison and
// logic give the number 1 or 0.
Value ApplyBinary(Operator op, const Value& left, const Value& right);
// kNegate or kNot.
Value ApplyUnary(Operator op, const Value& operand);
Value FromBool(bool value);

}  // namespace fmhost::calc
