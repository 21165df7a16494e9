// Implementations of the builtin functions, grouped by file; see builtins.cpp for the table.
#pragma once

#include "core/calc/builtins.h"

namespace fmhost::calc {

#define FMHOST_BUILTIN(name) \
    ErrorCode name(EvalContext& context, const std::vector<Value>& args, Value& result)

// builtins_text.cpp
FMHOST_BUILTIN(Length);
FMHOST_BUILTIN(Left);
FMHOST_BUILTIN(Right);
FMHOST_BUILTIN(Middle);
FMHOST_BUILTIN(Position);
FMHOST_BUILTIN(PatternCount);
FMHOST_BUILTIN(Upper);
FMHOST_BUILTIN(Lower);
FMHOST_BUILTIN(Trim);

// builtins_values.cpp
FMHOST_BUILTIN(List);
FMHOST_BUILTIN(ValueCount);
FMHOST_BUILTIN(GetValue);
FMHOST_BUILTIN(Char);
FMHOST_BUILTIN(Code);
FMHOST_BUILTIN(Base64Encode);
FMHOST_BUILTIN(Base64Decode);
FMHOST_BUILTIN(ContainerReference);

// builtins_convert.cpp
FMHOST_BUILTIN(IsEmpty);
FMHOST_BUILTIN(GetAsText);
FMHOST_BUILTIN(GetAsNumber);
FMHOST_BUILTIN(GetAsDate);
FMHOST_BUILTIN(GetAsTime);
FMHOST_BUILTIN(GetAsTimestamp);
FMHOST_BUILTIN(Date);
FMHOST_BUILTIN(Time);
FMHOST_BUILTIN(Timestamp);
FMHOST_BUILTIN(Year);
FMHOST_BUILTIN(Month);
FMHOST_BUILTIN(Day);
FMHOST_BUILTIN(DayOfWeek);
FMHOST_BUILTIN(DayOfYear);
FMHOST_BUILTIN(WeekOfYear);
FMHOST_BUILTIN(Hour);
FMHOST_BUILTIN(Minute);
FMHOST_BUILTIN(Seconds);

// builtins_style.cpp
FMHOST_BUILTIN(Rgb);
FMHOST_BUILTIN(TextColor);
FMHOST_BUILTIN(TextFont);
FMHOST_BUILTIN(TextSize);
FMHOST_BUILTIN(TextStyleAdd);
FMHOST_BUILTIN(TextStyleRemove);

#undef FMHOST_BUILTIN

// A whole number from a value: truncated toward zero, 0 when empty or "?", clamped to
// [min, max].
int64_t IntegerArgument(const Value& value, int64_t min, int64_t max);

}  // namespace fmhost::calc
