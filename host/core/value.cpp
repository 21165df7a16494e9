#include "core/value.h"

namespace fmhost {

Value::Value(Text text) : type_(NativeType::kText), text_(std::move(text)) {}

Value::Value(Decimal number)
    : type_(NativeType::kNumber), hasScalar_(true), number_(std::move(number)) {}

Value::Value(Container container)
    : type_(NativeType::kContainer), container_(std::move(container)) {}

Value Value::FromDateTime(const DateTime& value, NativeType type) {
    Value out;
    out.type_ = type;
    out.hasScalar_ = true;
    out.dateTime_ = value;
    return out;
}

Value Value::FromDate(const DateTime& date) {
    return FromDateTime(date, NativeType::kDate);
}
Value Value::FromTime(const DateTime& time) {
    return FromDateTime(time, NativeType::kTime);
}
Value Value::FromTimestamp(const DateTime& timestamp) {
    return FromDateTime(timestamp, NativeType::kTimestamp);
}

Value Value::FromBoolean(bool value) {
    Value out(Decimal(value ? 1 : 0));
    out.type_ = NativeType::kBoolean;
    return out;
}

Value Value::Empty(NativeType type) {
    Value out;
    out.type_ = type;
    return out;
}

bool Value::IsEmpty() const {
    switch (type_) {
        case NativeType::kText:
            return text_.Empty();
        case NativeType::kContainer:
            return container_.Empty();
        case NativeType::kInvalid:
            return true;
        default:
            return !hasScalar_;
    }
}

bool Value::IsValid() const {
    if (type_ == NativeType::kInvalid)
        return false;
    return !(hasScalar_ && (type_ == NativeType::kNumber || type_ == NativeType::kBoolean) &&
             !number_.IsValid());
}

void Value::Clear(NativeType type) {
    const int32_t locale = locale_;
    *this = Empty(type);
    locale_ = locale;
}

void Value::ConvertTo(NativeType type) {
    if (type == type_)
        return;
    Value converted = Empty(type);
    switch (type) {
        case NativeType::kText:
            converted = Value(AsText());
            break;
        case NativeType::kNumber:
            if (auto number = NumberIfAny())
                converted = Value(*number);
            break;
        case NativeType::kBoolean:
            if (!IsEmpty())
                converted = FromBoolean(AsBoolean());
            break;
        case NativeType::kDate:
            if (auto date = DateIfAny())
                converted = FromDate(*date);
            break;
        case NativeType::kTime:
            if (auto time = TimeIfAny())
                converted = FromTime(*time);
            break;
        case NativeType::kTimestamp:
            if (auto timestamp = TimestampIfAny())
                converted = FromTimestamp(*timestamp);
            break;
        case NativeType::kContainer:
            if (type_ == NativeType::kContainer)
                converted = *this;
            break;
        case NativeType::kInvalid:
            break;
    }
    converted.locale_ = locale_;
    *this = std::move(converted);
}

bool Value::SetFromText(const Text& text, NativeType type) {
    Value converted(text);
    if (type == NativeType::kText || type == NativeType::kInvalid) {
        // already text
    } else if (text.Empty()) {
        converted = Empty(type);
    } else if (type == NativeType::kContainer) {
        return false;
    } else {
        converted.ConvertTo(type);
        if (converted.IsEmpty())
            return false;
    }
    converted.locale_ = locale_;
    *this = std::move(converted);
    return true;
}

Text Value::AsText() const {
    if (!hasScalar_) {
        if (type_ == NativeType::kText)
            return text_;
        if (type_ == NativeType::kContainer) {
            Text name;
            container_.GetFileName(name);
            return name;
        }
        return Text();
    }
    switch (type_) {
        case NativeType::kDate:
            return Text::FromUtf8(dateTime_.DateText());
        case NativeType::kTime:
            return Text::FromUtf8(dateTime_.TimeText());
        case NativeType::kTimestamp:
            return Text::FromUtf8(dateTime_.TimestampText());
        default:
            return Text(number_.ToU16String());
    }
}

std::optional<Decimal> Value::NumberIfAny() const {
    if (!hasScalar_) {
        if (type_ == NativeType::kText)
            return NumberFromText(text_.Chars());
        if (type_ == NativeType::kContainer)
            return NumberFromText(AsText().Chars());
        return std::nullopt;
    }
    switch (type_) {
        case NativeType::kDate:
            return Decimal(dateTime_.DaysSinceEpoch());
        case NativeType::kTime:
            return dateTime_.SecondsOfTime();
        case NativeType::kTimestamp:
            return dateTime_.SecondsSinceEpoch();
        default:
            return number_;
    }
}

Decimal Value::AsNumber() const {
    return NumberIfAny().value_or(Decimal());
}

bool Value::AsBoolean() const {
    const std::optional<Decimal> number = NumberIfAny();
    return number && number->IsValid() && !number->IsZero();
}

std::optional<DateTime> Value::DateIfAny() const {
    if (type_ == NativeType::kDate || type_ == NativeType::kTimestamp) {
        if (!hasScalar_)
            return std::nullopt;
        DateTime date;
        date.SetDate(dateTime_);
        return date;
    }
    if (type_ == NativeType::kText) {
        if (auto date = DateTime::ParseDate(text_.Chars()))
            return date;
        if (auto timestamp = DateTime::ParseTimestamp(text_.Chars())) {
            DateTime date;
            date.SetDate(*timestamp);
            return date;
        }
        return std::nullopt;
    }
    if (type_ == NativeType::kNumber && hasScalar_ && number_.IsValid()) {
        DateTime date;
        date.SetDaysSinceEpoch(number_.Truncated().ToInt64());
        return date;
    }
    return std::nullopt;
}

std::optional<DateTime> Value::TimeIfAny() const {
    if (type_ == NativeType::kTime || type_ == NativeType::kTimestamp) {
        if (!hasScalar_)
            return std::nullopt;
        DateTime time;
        time.SetTime(dateTime_);
        return time;
    }
    if (type_ == NativeType::kText) {
        if (auto time = DateTime::ParseTime(text_.Chars()))
            return time;
        if (auto timestamp = DateTime::ParseTimestamp(text_.Chars())) {
            DateTime time;
            time.SetTime(*timestamp);
            return time;
        }
        return std::nullopt;
    }
    if (type_ == NativeType::kNumber && hasScalar_ && number_.IsValid()) {
        DateTime time;
        time.SetSecondsOfTime(number_);
        return time;
    }
    return std::nullopt;
}

std::optional<DateTime> Value::TimestampIfAny() const {
    if (!hasScalar_) {
        if (type_ == NativeType::kText)
            return DateTime::ParseTimestamp(text_.Chars());
        return std::nullopt;
    }
    switch (type_) {
        case NativeType::kTimestamp:
            return dateTime_;
        case NativeType::kDate: {
            DateTime midnight;
            midnight.SetDate(dateTime_);
            return midnight;
        }
        case NativeType::kTime: {  // a time alone lies on day 1
            DateTime timestamp = dateTime_;
            timestamp.SetDaysSinceEpoch(1);
            return timestamp;
        }
        case NativeType::kNumber:
            if (!number_.IsValid())
                return std::nullopt;
            {
                DateTime timestamp;
                timestamp.SetSecondsSinceEpoch(number_);
                return timestamp;
            }
        default:
            return std::nullopt;
    }
}

const Container& Value::AsContainer() const {
    static const Container kEmpty;
    return type_ == NativeType::kContainer ? container_ : kEmpty;
}

std::optional<Decimal> NumberFromText(std::u16string_view text) {
    std::string digits;
    bool negative = false;
    bool point = false;
    bool anyDigit = false;
    for (char16_t c : text) {
        if (c >= u'0' && c <= u'9') {
            digits.push_back(static_cast<char>(c));
            anyDigit = true;
        } else if (c == u'.' && !point) {
            digits.push_back('.');
            point = true;
        } else if (c == u'-' && !anyDigit) {
            negative = true;
        }
    }
    if (!anyDigit)
        return std::nullopt;
    std::optional<Decimal> magnitude = Decimal::Parse(digits);
    if (!magnitude)
        return std::nullopt;
    return negative ? -*magnitude : *magnitude;
}

}  // namespace fmhost
