#include "shell/resource_text.h"

#include "fmx_constants.h"
#include "shell/host_text.h"

namespace fmlib {

void LoadResourceText(uint32_t id, FmxText& text, bool nameOnly) {
    TextAssignUnicode(text, LoadResourceString(id));
    if (nameOnly) {
        TextPtr parenthesis = MakeNativeText("(");
        const uint32_t position = TextFind(text, *parenthesis, 0);
        // Without a "(" the host reports "not found" and the whole text is the name.
        if (position != fmx::kSizeInvalid) {
            TextDeleteText(text, position, fmx::kSizeEnd);
        }
    }
}

}  // namespace fmlib
