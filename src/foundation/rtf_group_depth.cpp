#include "foundation/rtf_group_depth.h"

#include <algorithm>

#include "foundation/rtf_control_word.h"

namespace slib {

size_t RtfGroupDepth(std::string_view rtf, size_t limit) {
    size_t depth = 0;
    size_t deepest = 0;
    for (size_t at = 0; at < rtf.size(); ++at) {
        const char c = rtf[at];
        if (c == '\\' && at + 1 < rtf.size()) {
            // A word's "\binN" data is never counted; an escaped brace is text.
            at = IsRtfLetter(rtf[at + 1]) ? RtfWordDataEnd(rtf, ReadRtfControlWord(rtf, at + 1)) - 1
                                          : at + 1;
        } else if (c == '{') {
            deepest = std::max(deepest, ++depth);
            if (deepest > limit) {
                return limit + 1;
            }
        } else if (c == '}' && depth > 0) {
            --depth;
        }
    }
    return deepest;
}

}  // namespace slib
