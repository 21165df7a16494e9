// Type conversions and the date and time functions.
#include "core/calc/builtin_impls.h"
#include "core/calc/operators.h"

namespace fmhost::calc {
namespace {

constexpr int64_t kMaxYear = 4000;  // the host's last calendar year

bool NumberArgument(const Value& value, Decimal& number) {
    const std::optional<Decimal> n = value.NumberIfAny();
    if (!n || !n->IsValid())
        return false;
    number = *n;
    return true;
}

bool InHostRange(const DateTime& date) {
    return date.DaysSinceEpoch() >= 1 && date.Year() <= kMaxYear;
}

// Empty stays empty; anything else that is no such value gives "?".
Value Converted(const Value& source, const std::optional<DateTime>& converted, NativeType type) {
    if (source.IsEmpty())
        return Value::Empty(type);
    return converted ? Value::FromDateTime(*converted, type) : Value::Unknown();
}

Value DatePart(const Value& source, int (DateTime::*part)() const) {
    const std::optional<DateTime> date = source.DateIfAny();
    return date ? Value(Decimal((*date.*part)())) : Value::Empty(NativeType::kNumber);
}

}  // namespace

ErrorCode IsEmpty(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = FromBool(args[0].IsEmpty());
    return kNoError;
}

ErrorCode GetAsText(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = Value(args[0].AsText());
    return kNoError;
}

ErrorCode GetAsNumber(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::optional<Decimal> number = args[0].NumberIfAny();
    result = number ? Value(*number) : Value::Empty(NativeType::kNumber);
    return kNoError;
}

ErrorCode GetAsDate(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = Converted(args[0], args[0].DateIfAny(), NativeType::kDate);
    return kNoError;
}

ErrorCode GetAsTime(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = Converted(args[0], args[0].TimeIfAny(), NativeType::kTime);
    return kNoError;
}

ErrorCode GetAsTimestamp(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = Converted(args[0], args[0].TimestampIfAny(), NativeType::kTimestamp);
    return kNoError;
}

// Date ( month ; day ; year ), normalised: Date ( 13 ; 1 ; 2020 ) is 1/1/2021.
ErrorCode Date(EvalContext&, const std::vector<Value>& args, Value& result) {
    Decimal month, day, year;
    DateTime date;
    if (!NumberArgument(args[0], month) || !NumberArgument(args[1], day) ||
        !NumberArgument(args[2], year) ||
        !date.SetNormalizedDate(year.ToInt64(), month.ToInt64(), day.ToInt64()) ||
        !InHostRange(date)) {
        result = Value::Unknown();
        return kNoError;
    }
    result = Value::FromDate(date);
    return kNoError;
}

// Time ( hours ; minutes ; seconds ); seconds may have a fraction; the total may exceed a day.
ErrorCode Time(EvalContext&, const std::vector<Value>& args, Value& result) {
    Decimal hours, minutes, seconds;
    if (!NumberArgument(args[0], hours) || !NumberArgument(args[1], minutes) ||
        !NumberArgument(args[2], seconds)) {
        result = Value::Unknown();
        return kNoError;
    }
    DateTime time;
    time.SetSecondsOfTime(hours * Decimal(3600) + minutes * Decimal(60) + seconds);
    result = Value::FromTime(time);
    return kNoError;
}

// Timestamp ( date ; time ); a time beyond 24 hours moves into the following days.
ErrorCode Timestamp(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::optional<DateTime> date = args[0].DateIfAny();
    const std::optional<DateTime> time = args[1].TimeIfAny();
    if (!date || !time) {
        result = Value::Unknown();
        return kNoError;
    }
    DateTime timestamp;
    timestamp.SetSecondsSinceEpoch(Decimal(date->DaysSinceEpoch() - 1) *
                                       Decimal(DateTime::kSecondsPerDay) +
                                   time->SecondsOfTime());
    result = Value::FromTimestamp(timestamp);
    return kNoError;
}

ErrorCode Year(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::optional<DateTime> date = args[0].DateIfAny();
    result = date ? Value(Decimal(date->Year())) : Value::Empty(NativeType::kNumber);
    return kNoError;
}

ErrorCode Month(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = DatePart(args[0], &DateTime::Month);
    return kNoError;
}

ErrorCode Day(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = DatePart(args[0], &DateTime::Day);
    return kNoError;
}

ErrorCode DayOfWeek(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = DatePart(args[0], &DateTime::DayOfWeek);
    return kNoError;
}

ErrorCode DayOfYear(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = DatePart(args[0], &DateTime::DayOfYear);
    return kNoError;
}

ErrorCode WeekOfYear(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = DatePart(args[0], &DateTime::WeekOfYear);
    return kNoError;
}

ErrorCode Hour(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::optional<DateTime> time = args[0].TimeIfAny();
    result = time ? Value(Decimal(time->Hour())) : Value::Empty(NativeType::kNumber);
    return kNoError;
}

ErrorCode Minute(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::optional<DateTime> time = args[0].TimeIfAny();
    result = time ? Value(Decimal(time->Minute())) : Value::Empty(NativeType::kNumber);
    return kNoError;
}

// Whole seconds plus the fraction.
ErrorCode Seconds(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::optional<DateTime> time = args[0].TimeIfAny();
    result = time ? Value(Decimal(time->Second()) + Decimal(time->Microsecond()) / Decimal(1000000))
                  : Value::Empty(NativeType::kNumber);
    return kNoError;
}

}  // namespace fmhost::calc
