// Text forms of dates and times: "M/D/YYYY", "H:MM:SS[.ffffff]", "M/D/YYYY H:MM:SS".
#include <cstdio>

#include "core/calendar.h"
#include "core/case_mapping.h"
#include "core/date_time.h"

namespace fmhost {
namespace {

// Reads up to `maxDigits` digits at `pos`; false when there is none.
bool ReadNumber(std::u16string_view text, size_t& pos, size_t maxDigits, int64_t& value) {
    const size_t start = pos;
    value = 0;
    while (pos < text.size() && pos - start < maxDigits && text[pos] >= u'0' && text[pos] <= u'9') {
        value = value * 10 + (text[pos] - u'0');
        ++pos;
    }
    return pos > start;
}

bool Expect(std::u16string_view text, size_t& pos, char16_t c) {
    if (pos < text.size() && text[pos] == c) {
        ++pos;
        return true;
    }
    return false;
}

void SkipSpaces(std::u16string_view text, size_t& pos) {
    while (pos < text.size() && text[pos] == u' ')
        ++pos;
}

std::u16string_view Trimmed(std::u16string_view text) {
    size_t begin = 0;
    size_t end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.substr(begin, end - begin);
}

// A date at the start of `text`; `pos` moves past it.
std::optional<DateTime> ReadDate(std::u16string_view text, size_t& pos) {
    int64_t a = 0, b = 0, c = 0;
    const size_t start = pos;
    if (!ReadNumber(text, pos, 5, a))
        return std::nullopt;
    int64_t year = 0, month = 0, day = 0;
    if (pos - start == 4 && Expect(text, pos, u'-')) {  // YYYY-MM-DD
        if (!ReadNumber(text, pos, 2, b) || !Expect(text, pos, u'-') ||
            !ReadNumber(text, pos, 2, c)) {
            return std::nullopt;
        }
        year = a, month = b, day = c;
    } else {
        if (!Expect(text, pos, u'/') || !ReadNumber(text, pos, 2, b) || !Expect(text, pos, u'/') ||
            !ReadNumber(text, pos, 5, c)) {
            return std::nullopt;
        }
        month = a, day = b, year = c;
    }
    if (month < 1 || month > 12 || day < 1 ||
        day > calendar::DaysInMonth(year, static_cast<int>(month))) {
        return std::nullopt;
    }
    return DateTime::FromDate(year, month, day);
}

std::optional<DateTime> ReadTime(std::u16string_view text, size_t& pos) {
    const bool negative = Expect(text, pos, u'-');
    int64_t hours = 0, minutes = 0, seconds = 0, micros = 0;
    if (!ReadNumber(text, pos, 12, hours) || !Expect(text, pos, u':') ||
        !ReadNumber(text, pos, 2, minutes) || minutes > 59) {
        return std::nullopt;
    }
    if (Expect(text, pos, u':') && (!ReadNumber(text, pos, 2, seconds) || seconds > 59)) {
        return std::nullopt;
    }
    if (Expect(text, pos, u'.')) {
        int64_t scale = 100000;
        while (pos < text.size() && text[pos] >= u'0' && text[pos] <= u'9') {
            micros += (text[pos++] - u'0') * scale;
            scale /= 10;
        }
    }
    size_t suffix = pos;
    SkipSpaces(text, suffix);
    const std::u16string marker = ToUpper(text.substr(suffix, 2));
    if (marker == u"AM" || marker == u"PM") {
        if (negative || hours < 1 || hours > 12)
            return std::nullopt;
        hours = hours % 12 + (marker == u"PM" ? 12 : 0);
        pos = suffix + 2;
    }
    DateTime out = DateTime::FromTime(hours, minutes, seconds, micros);
    if (negative)
        out.SetSecondsOfTime(-out.SecondsOfTime());
    return out;
}

}  // namespace

std::string DateTime::DateText() const {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%d/%d/%04lld", Month(), Day(),
                  static_cast<long long>(Year()));
    return buffer;
}

std::string DateTime::TimeText() const {
    const bool negative = seconds_ < 0;
    const int64_t whole = negative ? -(seconds_ + (micros_ > 0 ? 1 : 0)) : seconds_;
    const int32_t micros = negative && micros_ > 0 ? 1000000 - micros_ : micros_;
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%s%lld:%02d:%02d", negative ? "-" : "",
                  static_cast<long long>(whole / 3600), static_cast<int>(whole / 60 % 60),
                  static_cast<int>(whole % 60));
    std::string out = buffer;
    if (micros != 0) {
        std::snprintf(buffer, sizeof buffer, ".%06d", static_cast<int>(micros));
        std::string fraction = buffer;
        while (fraction.back() == '0')
            fraction.pop_back();
        out += fraction;
    }
    return out;
}

std::string DateTime::TimestampText() const {
    return DateText() + " " + TimeText();
}

std::optional<DateTime> DateTime::ParseDate(std::u16string_view text) {
    text = Trimmed(text);
    size_t pos = 0;
    std::optional<DateTime> date = ReadDate(text, pos);
    if (!date || pos != text.size())
        return std::nullopt;
    return date;
}

std::optional<DateTime> DateTime::ParseTime(std::u16string_view text) {
    text = Trimmed(text);
    size_t pos = 0;
    std::optional<DateTime> time = ReadTime(text, pos);
    if (!time || pos != text.size())
        return std::nullopt;
    return time;
}

std::optional<DateTime> DateTime::ParseTimestamp(std::u16string_view text) {
    text = Trimmed(text);
    size_t pos = 0;
    std::optional<DateTime> date = ReadDate(text, pos);
    if (!date)
        return std::nullopt;
    if (pos == text.size())
        return date;
    if (text[pos] != u' ')
        return std::nullopt;
    SkipSpaces(text, pos);
    std::optional<DateTime> time = ReadTime(text, pos);
    if (!time || pos != text.size() || time->SecondsOfTime() < Decimal(0) ||
        time->SecondsOfTime() >= Decimal(kSecondsPerDay)) {
        return std::nullopt;
    }
    date->SetTime(*time);
    return date;
}

}  // namespace fmhost
