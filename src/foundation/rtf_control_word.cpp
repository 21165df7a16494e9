#include "foundation/rtf_control_word.h"

#include <algorithm>

namespace slib {

namespace {

constexpr long kNumberLimit = 0x7FFFFFFFL;

}  // namespace

RtfControlWord ReadRtfControlWord(std::string_view rtf, size_t at) {
    RtfControlWord word;
    const size_t start = at;
    while (at < rtf.size() && IsRtfLetter(rtf[at])) {
        ++at;
    }
    word.name = rtf.substr(start, at - start);
    bool negative = false;
    if (at < rtf.size() && rtf[at] == '-') {
        negative = true;
        ++at;
    }
    const size_t digits = at;
    while (at < rtf.size() && IsRtfDigit(rtf[at])) {
        word.number = std::min(kNumberLimit, word.number * 10 + (rtf[at] - '0'));
        ++at;
    }
    word.hasNumber = at > digits;
    if (!word.hasNumber && negative) {
        --at;
        negative = false;
    }
    if (negative) {
        word.number = -word.number;
    }
    if (at < rtf.size() && rtf[at] == ' ') {
        ++at;
    }
    word.end = at;
    return word;
}

size_t RtfWordDataEnd(std::string_view rtf, const RtfControlWord& word) {
    if (word.name != "bin") {
        return word.end;
    }
    // Binary data may hold any byte, braces too.
    const size_t length = word.hasNumber && word.number > 0 ? static_cast<size_t>(word.number) : 0;
    return word.end + std::min(length, rtf.size() - word.end);
}

}  // namespace slib
