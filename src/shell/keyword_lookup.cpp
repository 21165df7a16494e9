#include "shell/keyword_lookup.h"

#include "shell/host_text.h"

namespace fmlib {

int32_t LookupKeyword(const FmxText& text, const char* const* table, size_t count) {
    TextPtr wanted = CopyText(text);
    TextLowercase(*wanted);
    for (size_t index = 0; index < count; ++index) {
        TextPtr keyword = MakeNativeText(table[index]);
        TextLowercase(*keyword);
        if (TextEquals(*wanted, *keyword)) {
            return static_cast<int32_t>(index);
        }
    }
    return -1;
}

}  // namespace fmlib
