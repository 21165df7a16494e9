#include "foundation/rtf_group_depth.h"

#include <algorithm>

namespace slib {

namespace {

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Past "\binN" and its data, from just after the backslash; `at` unchanged for any other word.
size_t SkipBinary(std::string_view rtf, size_t at) {
    if (rtf.substr(at, 3) != "bin") {
        return at;
    }
    size_t end = at + 3;
    size_t length = 0;
    while (end < rtf.size() && IsDigit(rtf[end])) {
        length = std::min<size_t>(length * 10 + static_cast<size_t>(rtf[end] - '0'), rtf.size());
        ++end;
    }
    if (end < rtf.size() && IsLetter(rtf[end])) {
        return at;  // a longer word, not \bin
    }
    if (end < rtf.size() && rtf[end] == ' ') {
        ++end;
    }
    return std::min(rtf.size(), end + length);
}

}  // namespace

size_t RtfGroupDepth(std::string_view rtf, size_t limit) {
    size_t depth = 0;
    size_t deepest = 0;
    for (size_t at = 0; at < rtf.size(); ++at) {
        const char c = rtf[at];
        if (c == '\\' && at + 1 < rtf.size()) {
            const size_t next = SkipBinary(rtf, at + 1);
            at = next != at + 1 ? next - 1 : at + 1;  // an escaped brace is text
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
