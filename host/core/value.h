// A typed host value (the host's Data): a native type plus its payload, converted to the other
// types with the host's rules. A number may be "?" (an invalid Decimal), the result of a failed
// operation such as a division by zero.
#pragma once

#include <cstdint>
#include <optional>

#include "core/container.h"
#include "core/date_time.h"
#include "core/decimal.h"
#include "core/text.h"

namespace fmhost {

enum class NativeType : int32_t {
    kInvalid = 0,
    kText = 1,
    kNumber = 2,
    kDate = 3,
    kTime = 4,
    kTimestamp = 5,
    kContainer = 6,
    kBoolean = 7,
};

constexpr int32_t kDefaultLocale = 1;  // the host's "system settings" locale type

class Value {
  public:
    Value() = default;  // invalid type, empty
    explicit Value(Text text);
    explicit Value(Decimal number);
    explicit Value(Container container);
    static Value FromText(std::u16string chars) { return Value(Text(std::move(chars))); }
    static Value FromDate(const DateTime& date);
    static Value FromTime(const DateTime& time);
    static Value FromTimestamp(const DateTime& timestamp);
    // `type` must be kDate, kTime or kTimestamp.
    static Value FromDateTime(const DateTime& value, NativeType type);
    static Value FromBoolean(bool value);
    static Value Unknown() { return Value(Decimal::Invalid()); }  // "?"
    // An empty value of the given type (an empty number, an empty date, ...).
    static Value Empty(NativeType type);

    NativeType Type() const { return type_; }
    bool IsEmpty() const;
    // False for the invalid type and for "?".
    bool IsValid() const;
    int32_t Locale() const { return locale_; }
    void SetLocale(int32_t locale) { locale_ = locale; }

    // Empties the value and gives it a type.
    void Clear(NativeType type);
    // Converts in place with the rules below; the locale is kept.
    void ConvertTo(NativeType type);
    // Interprets text as a value of `type` (text, number, date, time, timestamp, boolean).
    // False, and nothing changed, when the text is not such a value.
    bool SetFromText(const Text& text, NativeType type);

    // Host conversions:
    //  text       numbers as the host prints them, dates/times in their text forms, a
    //             container's file name, booleans 1 / 0, invalid as empty.
    //  number     text: its digits, the first decimal point, negative when a "-" precedes
    //             the first digit, empty without digits; date: day number; time: seconds;
    //             timestamp: seconds since 1/1/0001; boolean 1 / 0; container: its text's.
    //  boolean    number not 0 (empty is false).
    Text AsText() const;
    // Empty when the value has no number; "?" stays "?".
    std::optional<Decimal> NumberIfAny() const;
    Decimal AsNumber() const;  // 0 when empty
    bool AsBoolean() const;
    // Empty when there is no such date/time: text that does not parse, a date asked for a
    // time. Numbers: a date is its day number, a time / timestamp its seconds.
    std::optional<DateTime> DateIfAny() const;
    std::optional<DateTime> TimeIfAny() const;
    std::optional<DateTime> TimestampIfAny() const;
    DateTime AsDate() const { return DateIfAny().value_or(DateTime()); }
    DateTime AsTime() const { return TimeIfAny().value_or(DateTime()); }
    DateTime AsTimestamp() const { return TimestampIfAny().value_or(DateTime()); }
    // The container of a container value, or an empty one.
    const Container& AsContainer() const;

    // The payload as stored, for callers that switch on Type().
    const Text& StoredText() const { return text_; }
    const Decimal& StoredNumber() const { return number_; }
    const DateTime& StoredDateTime() const { return dateTime_; }

  private:
    NativeType type_ = NativeType::kInvalid;
    bool hasScalar_ = false;  // number, date, time, timestamp or boolean present
    Text text_;
    Decimal number_;
    DateTime dateTime_;
    Container container_;
    int32_t locale_ = kDefaultLocale;
};

// Number from text by the host's rule (see Value::AsText above); empty without digits.
std::optional<Decimal> NumberFromText(std::u16string_view text);

}  // namespace fmhost
