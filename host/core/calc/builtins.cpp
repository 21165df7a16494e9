#include <algorithm>

#include "core/calc/builtin_impls.h"
#include "core/case_mapping.h"

namespace fmhost::calc {
namespace {

const Builtin kBuiltins[] = {
    {u"IsEmpty", 1, 1, IsEmpty},
    {u"GetAsText", 1, 1, GetAsText},
    {u"GetAsNumber", 1, 1, GetAsNumber},
    {u"GetAsDate", 1, 1, GetAsDate},
    {u"GetAsTime", 1, 1, GetAsTime},
    {u"GetAsTimestamp", 1, 1, GetAsTimestamp},
    {u"Date", 3, 3, Date},
    {u"Time", 3, 3, Time},
    {u"Timestamp", 2, 2, Timestamp},
    {u"Year", 1, 1, Year},
    {u"Month", 1, 1, Month},
    {u"Day", 1, 1, Day},
    {u"DayOfWeek", 1, 1, DayOfWeek},
    {u"DayOfYear", 1, 1, DayOfYear},
    {u"WeekOfYear", 1, 1, WeekOfYear},
    {u"Hour", 1, 1, Hour},
    {u"Minute", 1, 1, Minute},
    {u"Seconds", 1, 1, Seconds},
    {u"Length", 1, 1, Length},
    {u"Left", 2, 2, Left},
    {u"Right", 2, 2, Right},
    {u"Middle", 3, 3, Middle},
    {u"Position", 4, 4, Position},
    {u"PatternCount", 2, 2, PatternCount},
    {u"Upper", 1, 1, Upper},
    {u"Lower", 1, 1, Lower},
    {u"Trim", 1, 1, Trim},
    {u"Char", 1, 1, Char},
    {u"Code", 1, 1, Code},
    {u"List", 1, -1, List},
    {u"ValueCount", 1, 1, ValueCount},
    {u"GetValue", 2, 2, GetValue},
    {u"Base64Encode", 1, 1, Base64Encode},
    {u"Base64Decode", 1, 2, Base64Decode},
    {u"ContainerReference", 1, 1, ContainerReference},
    {u"RGB", 3, 3, Rgb},
    {u"TextColor", 2, 2, TextColor},
    {u"TextFont", 2, 3, TextFont},
    {u"TextSize", 2, 2, TextSize},
    {u"TextStyleAdd", 2, 2, TextStyleAdd},
    {u"TextStyleRemove", 2, 2, TextStyleRemove},
};

const std::pair<std::u16string_view, FaceBits> kStyleKeywords[] = {
    {u"Plain", face::kPlain},
    {u"Bold", face::kBold},
    {u"Italic", face::kItalic},
    {u"Underline", face::kUnderline},
    {u"Condense", face::kCondense},
    {u"Extend", face::kExtend},
    {u"Strikethrough", face::kStrikethrough},
    {u"SmallCaps", face::kSmallCaps},
    {u"Superscript", face::kSuperscript},
    {u"Subscript", face::kSubscript},
    {u"Uppercase", face::kUppercase},
    {u"Lowercase", face::kLowercase},
    {u"Titlecase", face::kTitlecase},
    {u"WordUnderline", face::kWordUnderline},
    {u"DoubleUnderline", face::kDoubleUnderline},
    {u"AllStyles", face::kAllStyles},
};

}  // namespace

const Builtin* FindBuiltin(std::u16string_view name) {
    for (const Builtin& builtin : kBuiltins) {
        if (EqualsIgnoringCase(builtin.name, name))
            return &builtin;
    }
    return nullptr;
}

std::optional<FaceBits> FindStyleKeyword(std::u16string_view name) {
    for (const auto& [keyword, faces] : kStyleKeywords) {
        if (EqualsIgnoringCase(keyword, name))
            return faces;
    }
    return std::nullopt;
}

int64_t IntegerArgument(const Value& value, int64_t min, int64_t max) {
    const Decimal number = value.AsNumber();
    if (!number.IsValid())
        return std::clamp<int64_t>(0, min, max);
    return std::clamp(number.Truncated().ToInt64(), min, max);
}

}  // namespace fmhost::calc
