#include "shell/value_conversion.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "fmx_constants.h"
#include "foundation/date.h"
#include "foundation/font.h"
#include "foundation/number.h"
#include "foundation/utf_conversion.h"
#include "shell/host_data.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/host_values.h"

namespace fmlib {

namespace {

// Days from 1970-01-01 to a proleptic Gregorian date (H. Hinnant's days_from_civil).
int64_t DaysFromCivil(int64_t year, int64_t month, int64_t day) {
    year -= month <= 2;
    const int64_t era = (year >= 0 ? year : year - 399) / 400;
    const int64_t yearOfEra = year - era * 400;
    const int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

// The number's own text is exact; only a form the decimal parser does not take (a host that
// formats with a decimal comma, say) falls back to the binary value.
std::shared_ptr<slib::Number> ToFoundationNumber(const FmxData& data) {
    std::string text = slib::Utf16ToUtf8(TextUnits(DataGetAsText(data)));
    if (auto number = slib::Number::FromDecimalText(text)) {
        return number;
    }
    const double value = FixPtAsFloat(DataGetAsNumber(data));
    if (!std::isfinite(value)) {
        return std::make_shared<slib::Number>(0);
    }
    const int length = std::snprintf(nullptr, 0, "%.16f", value);
    std::vector<char> digits(static_cast<size_t>(length) + 1);
    std::snprintf(digits.data(), digits.size(), "%.16f", value);
    return slib::Number::FromDecimalText(digits.data());
}

void ReadStyle(const FmxText& text, const FmxData* fontSource, const FmxExprEnv* env,
               slib::TextAttributes& attributes) {
    CharacterStylePtr style = NewCharacterStyle();
    TextGetStyle(text, *style, 0);
    if (CharacterStyleIsAllDisabled(*style)) {
        return;
    }
    if (CharacterStyleIsFontEnabled(*style) && fontSource != nullptr && env != nullptr) {
        TextPtr name = NewText();
        if (DataGetPostscriptFontInfo(*fontSource, CharacterStyleGetFont(*style), *name, *env)) {
            attributes.font = std::make_shared<slib::Font>(TextUnits(*name));
        }
    }
    if (CharacterStyleIsSizeEnabled(*style)) {
        attributes.size = CharacterStyleGetSize(*style);
    }
    if (CharacterStyleIsColorEnabled(*style)) {
        const FmxColor& color = CharacterStyleGetColor(*style);
        attributes.color = std::make_shared<slib::Color>(ColorGetRed(color), ColorGetGreen(color),
                                                         ColorGetBlue(color), ColorGetAlpha(color));
    }
    if (CharacterStyleIsAnyFaceEnabled(*style)) {
        attributes.face = CharacterStyleGetFace(*style);
    }
}

}  // namespace

std::shared_ptr<slib::Object> ToFoundationValue(const FmxData& data, const FmxExprEnv* env) {
    switch (DataGetNativeType(data)) {
        case fmx::kDTNumber:
            return ToFoundationNumber(data);
        case fmx::kDTTimeStamp:
            return ToFoundationDate(DataGetAsTimeStamp(data));
        case fmx::kDTBinary:
            return ToContainerValue(DataGetBinaryData(data));
        default:
            return ToFoundationStyledText(DataGetAsText(data), &data, env);
    }
}

std::shared_ptr<slib::Date> ToFoundationDate(const FmxDateTime& value) {
    constexpr int64_t kSecondsPerDay = 86400;
    const int64_t days =
        DaysFromCivil(DateTimeGetYear(value), DateTimeGetMonth(value), DateTimeGetDay(value)) -
        DaysFromCivil(1, 1, 1);
    const int64_t seconds = days * kSecondsPerDay + int64_t{DateTimeGetHour(value)} * 3600 +
                            int64_t{DateTimeGetMinute(value)} * 60 + DateTimeGetSec(value);
    return std::make_shared<slib::Date>(seconds, DateTimeGetUSec(value));
}

std::shared_ptr<slib::String> ToFoundationString(const FmxText& text) {
    return std::make_shared<slib::String>(TextUnits(text));
}

std::shared_ptr<slib::AttributedString> ToFoundationStyledText(const FmxText& text,
                                                               const FmxData* fontSource,
                                                               const FmxExprEnv* env) {
    std::u16string units = TextUnits(text);
    slib::TextAttributes attributes;
    if (!units.empty()) {
        ReadStyle(text, fontSource, env, attributes);
    }
    return std::make_shared<slib::AttributedString>(std::move(units), std::move(attributes));
}

}  // namespace fmlib
