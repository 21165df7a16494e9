#include "foundation/argument_lines.h"

namespace slib {

std::vector<std::u16string> SplitArgumentLines(const std::u16string& text) {
    std::vector<std::u16string> lines;
    if (text.empty()) {
        return lines;
    }
    size_t start = 0;
    for (;;) {
        const size_t end = text.find(u'\r', start);
        lines.push_back(text.substr(start, end - start));
        if (end == std::u16string::npos) {
            return lines;
        }
        start = end + 1;
    }
}

}  // namespace slib
