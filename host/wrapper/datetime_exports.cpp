// Dates, times and timestamps. Day numbers count from 1 January 0001 (day 1), weekdays from
// Sunday (1), as the host's calculations do.
#include <string_view>

#include "core/calc_errors.h"
#include "guard.h"
#include "objects.h"

using fmhost::DateTime;
using fmhost::Decimal;
using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

DateTime& ValueOf(void* self) {
    return Ref<FmxDateTime>(self).value;
}
const DateTime& ValueOf(const void* self) {
    return Ref<FmxDateTime>(self).value;
}

// A date, a time or a timestamp, whichever the text is; nothing (day 0, midnight) otherwise.
FmxDateTime* Parse(std::u16string_view text) {
    std::optional<DateTime> parsed = DateTime::ParseDate(text);
    if (!parsed)
        parsed = DateTime::ParseTime(text);
    if (!parsed)
        parsed = DateTime::ParseTimestamp(text);
    return fmwrapper::New(FmxDateTime{parsed.value_or(DateTime())});
}

FmxErrcode Outcome(bool succeeded) {
    return succeeded ? 0 : fmhost::kErrCalcGeneric;
}

}  // namespace

extern "C" {

FmxDateTime* FM_DateTime_Constructor1(FmxErr& err) {
    return Guard(err, [] { return fmwrapper::New(FmxDateTime{}); });
}

FmxDateTime* FM_DateTime_Constructor2(const uint16_t* dateString, uint32_t dateLength,
                                      const FmxLocale& intl, FmxErr& err) {
    return Guard(err, [&] {
        Ref(intl);
        if (dateString == nullptr && dateLength != 0)
            throw std::invalid_argument("null string");
        return Parse(
            std::u16string_view(reinterpret_cast<const char16_t*>(dateString), dateLength));
    });
}

FmxDateTime* FM_DateTime_Constructor3(const FmxText& dateText, const FmxLocale& intl, FmxErr& err) {
    return Guard(err, [&] {
        Ref(intl);
        return Parse(Ref(dateText).text.Chars());
    });
}

void FM_DateTime_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxDateTime*>(self); });
}

bool FM_DateTime_operatorEQ(const void* self, const FmxDateTime& that, FmxErr& err) {
    return Guard(err, [&] { return ValueOf(self) == Ref(that).value; });
}

bool FM_DateTime_operatorNE(const void* self, const FmxDateTime& that, FmxErr& err) {
    return Guard(err, [&] { return ValueOf(self) != Ref(that).value; });
}

bool FM_DateTime_IsLeapYear(const void* self, FmxErr& err) {
    return Guard(err, [&] { return ValueOf(self).IsLeapYear(); });
}

int16_t FM_DateTime_DayOfWeek(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int16_t>(ValueOf(self).DayOfWeek()); });
}

int16_t FM_DateTime_DayOfYear(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int16_t>(ValueOf(self).DayOfYear()); });
}

int16_t FM_DateTime_WeekOfYear(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int16_t>(ValueOf(self).WeekOfYear()); });
}

void FM_DateTime_Now(void* self, FmxErr& err) {
    Guard(err, [&] { ValueOf(self) = DateTime::Now(); });
}

void FM_DateTime_SetDate(void* self, const FmxDateTime& datetime, FmxErr& err) {
    Guard(err, [&] { ValueOf(self).SetDate(Ref(datetime).value); });
}

FmxErrcode FM_DateTime_SetNormalizedDate1(void* self, int16_t month, int16_t day, int16_t year,
                                          FmxErr& err) {
    return Guard(err, [&] { return Outcome(ValueOf(self).SetNormalizedDate(year, month, day)); });
}

FmxErrcode FM_DateTime_SetNormalizedDate2(void* self, const FmxFixPt& year, const FmxFixPt& month,
                                          const FmxFixPt& day, FmxErr& err) {
    return Guard(err, [&] {
        return Outcome(ValueOf(self).SetNormalizedDate(
            Ref(year).number.ToInt64(), Ref(month).number.ToInt64(), Ref(day).number.ToInt64()));
    });
}

void FM_DateTime_SetDaysSinceEpoch(void* self, int64_t days, FmxErr& err) {
    Guard(err, [&] { ValueOf(self).SetDaysSinceEpoch(days); });
}

void FM_DateTime_SetTime(void* self, const FmxDateTime& datetime, FmxErr& err) {
    Guard(err, [&] { ValueOf(self).SetTime(Ref(datetime).value); });
}

FmxErrcode FM_DateTime_SetNormalizedTime1(void* self, int64_t hour, int16_t minute, int16_t sec,
                                          int32_t usec, FmxErr& err) {
    return Guard(err,
                 [&] { return Outcome(ValueOf(self).SetNormalizedTime(hour, minute, sec, usec)); });
}

// Fractions are kept: 1.5 hours is 1:30:00.
FmxErrcode FM_DateTime_SetNormalizedTime2(void* self, const FmxFixPt& hour, const FmxFixPt& minute,
                                          const FmxFixPt& sec, FmxErr& err) {
    return Guard(err, [&] {
        const Decimal total =
            Ref(hour).number * Decimal(3600) + Ref(minute).number * Decimal(60) + Ref(sec).number;
        if (!total.IsValid())
            return Outcome(false);
        ValueOf(self).SetSecondsOfTime(total);
        return Outcome(true);
    });
}

void FM_DateTime_SetSecsSinceMidnight(void* self, const FmxFixPt& secs, FmxErr& err) {
    Guard(err, [&] { ValueOf(self).SetSecondsOfTime(Ref(secs).number); });
}

void FM_DateTime_SetSecondsSinceEpoch(void* self, const FmxFixPt& seconds, FmxErr& err) {
    Guard(err, [&] { ValueOf(self).SetSecondsSinceEpoch(Ref(seconds).number); });
}

int16_t FM_DateTime_GetYear(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int16_t>(ValueOf(self).Year()); });
}

int16_t FM_DateTime_GetMonth(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int16_t>(ValueOf(self).Month()); });
}

int16_t FM_DateTime_GetDay(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int16_t>(ValueOf(self).Day()); });
}

int32_t FM_DateTime_GetDaysSinceEpoch(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int32_t>(ValueOf(self).DaysSinceEpoch()); });
}

int32_t FM_DateTime_GetHour(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int32_t>(ValueOf(self).Hour()); });
}

int16_t FM_DateTime_GetMinute(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int16_t>(ValueOf(self).Minute()); });
}

int16_t FM_DateTime_GetSec(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<int16_t>(ValueOf(self).Second()); });
}

int32_t FM_DateTime_GetUSec(const void* self, FmxErr& err) {
    return Guard(err, [&] { return ValueOf(self).Microsecond(); });
}

// The seconds of the minute, with the microseconds as fraction.
void FM_DateTime_GetSeconds(const void* self, FmxFixPt& results, FmxErr& err) {
    Guard(err, [&] {
        const DateTime& value = ValueOf(self);
        Ref(results).number =
            Decimal(value.Second()) + Decimal(value.Microsecond()) / Decimal(1000000);
    });
}

void FM_DateTime_GetSecsSinceMidnight(const void* self, FmxFixPt& results, FmxErr& err) {
    Guard(err, [&] { Ref(results).number = ValueOf(self).SecondsOfTime(); });
}

void FM_DateTime_GetSecondsSinceEpoch(const void* self, FmxFixPt& results, FmxErr& err) {
    Guard(err, [&] { Ref(results).number = ValueOf(self).SecondsSinceEpoch(); });
}

}  // extern "C"
