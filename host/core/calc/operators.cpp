#include "core/calc/operators.h"

#include "core/case_mapping.h"

namespace fmhost::calc {
namespace {

bool IsMoment(NativeType type) {
    return type == NativeType::kDate || type == NativeType::kTime || type == NativeType::kTimestamp;
}

bool IsTextLike(NativeType type) {
    return type == NativeType::kText || type == NativeType::kContainer ||
           type == NativeType::kInvalid;
}

// A date moves by whole days, a time or timestamp by seconds.
Value Shifted(const Value& moment, const Decimal& amount) {
    if (!amount.IsValid())
        return Value::Unknown();
    DateTime result = moment.StoredDateTime();
    switch (moment.Type()) {
        case NativeType::kDate:
            result.SetDaysSinceEpoch(result.DaysSinceEpoch() + amount.Truncated().ToInt64());
            break;
        case NativeType::kTime:
            result.SetSecondsOfTime(result.SecondsOfTime() + amount);
            break;
        default:
            result.SetSecondsSinceEpoch(result.SecondsSinceEpoch() + amount);
            break;
    }
    return Value::FromDateTime(result, moment.Type());
}

// Date, time and timestamp arithmetic; nothing when the operands are plain numbers.
std::optional<Value> MomentArithmetic(Operator op, const Value& left, const Value& right) {
    const bool leftMoment = IsMoment(left.Type()) && !left.IsEmpty();
    const bool rightMoment = IsMoment(right.Type()) && !right.IsEmpty();
    if (leftMoment && op == Operator::kSubtract && right.Type() == left.Type() && rightMoment) {
        const Decimal difference = left.AsNumber() - right.AsNumber();
        if (left.Type() != NativeType::kTime)
            return Value(difference);
        DateTime time;
        time.SetSecondsOfTime(difference);
        return Value::FromTime(time);
    }
    if (leftMoment && !IsMoment(right.Type())) {
        const Decimal amount = right.AsNumber();
        return Shifted(left, op == Operator::kSubtract ? -amount : amount);
    }
    if (rightMoment && op == Operator::kAdd && !IsMoment(left.Type())) {
        return Shifted(right, left.AsNumber());
    }
    return std::nullopt;
}

bool StrictNumber(const Value& value, Decimal& number) {
    std::u16string text = value.AsText().Chars();
    while (!text.empty() && text.back() == u' ')
        text.pop_back();
    const size_t start = text.find_first_not_of(u' ');
    if (start == std::u16string::npos)
        return false;
    std::optional<Decimal> parsed = Decimal::Parse(std::u16string_view(text).substr(start));
    if (parsed)
        number = *parsed;
    return parsed.has_value();
}

// Numbers compare numerically and texts without regard to case; a text compared with a
// number compares numerically only when the text is exactly a number.
int Compare(const Value& left, const Value& right) {
    const bool leftText = IsTextLike(left.Type());
    const bool rightText = IsTextLike(right.Type());
    if (!left.IsEmpty() && !right.IsEmpty()) {
        Decimal a = left.AsNumber();
        Decimal b = right.AsNumber();
        if (!leftText && !rightText)
            return a.Compare(b);
        if (leftText != rightText && (!leftText || StrictNumber(left, a)) &&
            (!rightText || StrictNumber(right, b))) {
            return a.Compare(b);
        }
    }
    return CompareIgnoringCase(left.AsText().Chars(), right.AsText().Chars());
}

}  // namespace

Value FromBool(bool value) {
    return Value(Decimal(value ? 1 : 0));
}

Value ApplyBinary(Operator op, const Value& left, const Value& right) {
    switch (op) {
        case Operator::kOr:
            return FromBool(left.AsBoolean() || right.AsBoolean());
        case Operator::kXor:
            return FromBool(left.AsBoolean() != right.AsBoolean());
        case Operator::kAnd:
            return FromBool(left.AsBoolean() && right.AsBoolean());
        case Operator::kEqual:
            return FromBool(Compare(left, right) == 0);
        case Operator::kNotEqual:
            return FromBool(Compare(left, right) != 0);
        case Operator::kLess:
            return FromBool(Compare(left, right) < 0);
        case Operator::kLessEqual:
            return FromBool(Compare(left, right) <= 0);
        case Operator::kGreater:
            return FromBool(Compare(left, right) > 0);
        case Operator::kGreaterEqual:
            return FromBool(Compare(left, right) >= 0);
        case Operator::kConcat: {
            Text text = left.AsText();
            text.AppendText(right.AsText());
            return Value(std::move(text));
        }
        case Operator::kAdd:
        case Operator::kSubtract:
            if (std::optional<Value> moment = MomentArithmetic(op, left, right))
                return *moment;
            return Value(op == Operator::kAdd ? left.AsNumber() + right.AsNumber()
                                              : left.AsNumber() - right.AsNumber());
        case Operator::kMultiply:
            return Value(left.AsNumber() * right.AsNumber());
        case Operator::kDivide:
            return Value(left.AsNumber() / right.AsNumber());
        case Operator::kPower:
            return Value(left.AsNumber().Power(right.AsNumber()));
        default:
            return Value::Unknown();
    }
}

Value ApplyUnary(Operator op, const Value& operand) {
    if (op == Operator::kNot)
        return FromBool(!operand.AsBoolean());
    return Value(-operand.AsNumber());
}

}  // namespace fmhost::calc
