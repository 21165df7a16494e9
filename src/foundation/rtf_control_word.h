#pragma once
// One RTF control word, read from just after its backslash. Every RTF scan reads words through
// this, so they agree on where a word and "\binN" data end.

#include <cstddef>
#include <string_view>

namespace slib {

inline bool IsRtfLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
inline bool IsRtfDigit(char c) {
    return c >= '0' && c <= '9';
}

struct RtfControlWord {
    std::string_view name;
    bool hasNumber = false;
    long number = 0;  // saturates at the 32-bit limit RTF numbers have
    size_t end = 0;   // past the word, its number and the one space that ends it
};

// The word whose letters start at `at`. A lone "-" after the letters is text, not the word's.
RtfControlWord ReadRtfControlWord(std::string_view rtf, size_t at);

// Past the data of `word` when it is "\binN" (clamped to the text's end), else `word.end`.
size_t RtfWordDataEnd(std::string_view rtf, const RtfControlWord& word);

}  // namespace slib
