#include "bridge/item_selectors.h"

#include "fmx_constants.h"
#include "foundation/access_rights.h"
#include "foundation/path.h"
#include "shell/host_text.h"

namespace bridge {

int PathStyleOfSelector(int32_t selector) {
    using slib::PathStyle;
    static const int kStyles[] = {
        PathStyle::kShort,                           // FSSpec
        PathStyle::kNative | PathStyle::kRelative,   // native-relative
        PathStyle::kNative,                          // native-full
        PathStyle::kWindows | PathStyle::kRelative,  // win-relative
        PathStyle::kWindows,                         // win-full
        PathStyle::kUnix | PathStyle::kRelative,     // unix_relative
        PathStyle::kUnix | PathStyle::kRelative,     // unix-relative
        PathStyle::kUnix,                            // unix-full
        PathStyle::kHost,                            // FileMaker
        PathStyle::kUrl,                             // URL
    };
    return kStyles[selector - kSelectFirstPathForm];
}

std::u16string RightsText(uint32_t rights) {
    std::u16string text;
    const struct {
        uint32_t bit;
        const char16_t* word;
    } kWords[] = {{slib::RightsBit::kRead, u"read"},
                  {slib::RightsBit::kWrite, u"write"},
                  {slib::RightsBit::kExecute, u"execute"}};
    for (const auto& word : kWords) {
        if ((rights & word.bit) != 0) {
            text += text.empty() ? u"" : u"|";
            text += word.word;
        }
    }
    return text;
}

uint32_t RightsFromWords(const FmxText& text) {
    const struct {
        uint32_t bit;
        const char* word;
    } kWords[] = {{slib::RightsBit::kRead, "read"},
                  {slib::RightsBit::kWrite, "write"},
                  {slib::RightsBit::kExecute, "execute"}};
    uint32_t rights = 0;
    for (const auto& word : kWords) {
        const fmlib::TextPtr wanted = fmlib::MakeNativeText(word.word);
        if (fmlib::TextFindIgnoringCase(text, *wanted, 0) != fmx::kSizeInvalid) {
            rights |= word.bit;
        }
    }
    return rights;
}

}  // namespace bridge
