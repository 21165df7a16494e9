#include "shell/result.h"

#include "fmx_constants.h"
#include "shell/host_data.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"

namespace fmlib {

void SetResultCode(FmxData& result, int32_t code) {
    FixPtPtr number = NewFixPt(code, fmx::kDefaultPrecision);
    DataSetAsNumber(result, *number, fmx::kDTNumber);
}

void SetResultText(FmxData& result, const FmxText& text) {
    DataSetAsText(result, text, DataGetLocale(result), fmx::kDTText);
}

void SetResultText(FmxData& result, std::u16string_view text) {
    TextPtr host = MakeText(text);
    SetResultText(result, *host);
}

}  // namespace fmlib
