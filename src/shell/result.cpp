#include "shell/result.h"

#include "fmx_constants.h"
#include "shell/host_data.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/host_values.h"

namespace fmlib {

void SetResultCode(FmxData& result, int32_t code) {
    FixPtPtr number = NewFixPt(code, fmx::kDefaultPrecision);
    DataSetAsNumber(result, *number, fmx::kDTNumber);
}

void SetResultInteger(FmxData& result, int64_t value) {
    FixPtPtr number = NewFixPt(0, fmx::kDefaultPrecision);
    FixPtAssignInt64(*number, value);
    DataSetAsNumber(result, *number, fmx::kDTNumber);
}

void SetResultTimestamp(FmxData& result, const slib::Date& date) {
    const slib::CivilTime time = date.civil();
    DateTimePtr timestamp = NewDateTime();
    DateTimeSetNormalizedDate(*timestamp, static_cast<int16_t>(time.month),
                              static_cast<int16_t>(time.day), static_cast<int16_t>(time.year));
    DateTimeSetNormalizedTime(*timestamp, time.hour, static_cast<int16_t>(time.minute),
                              static_cast<int16_t>(time.second), time.microseconds);
    DataSetAsTimeStamp(result, *timestamp, fmx::kDTTimeStamp);
}

void SetResultText(FmxData& result, const FmxText& text) {
    DataSetAsText(result, text, DataGetLocale(result), fmx::kDTText);
}

void SetResultText(FmxData& result, std::u16string_view text) {
    TextPtr host = MakeText(text);
    SetResultText(result, *host);
}

}  // namespace fmlib
