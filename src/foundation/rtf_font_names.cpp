#include "foundation/rtf_font_names.h"

#include <cstdint>
#include <cstdlib>

#include "foundation/rtf_control_word.h"

namespace slib {

namespace {

// One control word at `at` (just after its "\"): its letters and its optional signed number.
struct ControlWord {
    std::string_view name;
    bool hasNumber = false;
    long number = 0;
    size_t end = 0;  // past the word, its number and one space that ends it
};

ControlWord ReadControlWord(std::string_view rtf, size_t at) {
    ControlWord word;
    const size_t start = at;
    while (at < rtf.size() && IsRtfLetter(rtf[at])) {
        ++at;
    }
    word.name = rtf.substr(start, at - start);
    const size_t numberStart = at;
    if (at < rtf.size() && rtf[at] == '-') {
        ++at;
    }
    const size_t digitsStart = at;
    while (at < rtf.size() && IsRtfDigit(rtf[at]) && at - digitsStart < 10) {
        ++at;
    }
    if (at > digitsStart) {
        word.hasNumber = true;
        word.number = std::strtol(std::string(rtf.substr(numberStart, at - numberStart)).c_str(),
                                  nullptr, 10);
    } else {
        at = numberStart;
    }
    if (at < rtf.size() && rtf[at] == ' ') {
        ++at;
    }
    word.end = at;
    return word;
}

// The name of the font entry whose text starts at `at`, up to its ";" or the entry's end.
struct EntryName {
    size_t start = std::string_view::npos;  // the first byte of the name
    size_t end = 0;                         // its ";" or the entry's closing brace
    std::u16string name;
    bool unicode = false;   // held a \u escape
    bool decodable = true;  // nothing but ASCII and \u escapes
    size_t entryEnd = 0;    // past the entry's closing brace (or the text's end)
};

EntryName ReadEntry(std::string_view rtf, size_t at) {
    EntryName entry;
    int depth = 0;  // nested groups inside the entry
    long fallback = 1;
    long skip = 0;  // fallback characters still to skip after a \u
    bool ended = false;
    while (at < rtf.size()) {
        const char c = rtf[at];
        if (c == '{') {
            ++depth;
            ++at;
            continue;
        }
        if (c == '}') {
            ++at;
            if (depth-- == 0) {
                if (!ended) {
                    entry.end = at - 1;
                }
                entry.entryEnd = at;
                return entry;
            }
            continue;
        }
        if (depth > 0 || ended) {
            at += c == '\\' && at + 1 < rtf.size() ? 2 : 1;
            continue;
        }
        if (c == '\r' || c == '\n') {
            ++at;
            continue;
        }
        if (c == '\\' && at + 1 < rtf.size() && IsRtfLetter(rtf[at + 1])) {
            const ControlWord word = ReadControlWord(rtf, at + 1);
            if (word.name == "u" && word.hasNumber) {
                if (entry.start == std::string_view::npos) {
                    entry.start = at;
                }
                entry.name.push_back(static_cast<char16_t>(word.number & 0xFFFF));
                entry.unicode = true;
                skip = fallback;
            } else if (word.name == "uc" && word.hasNumber) {
                fallback = word.number < 0 ? 0 : word.number;
            } else if (entry.start != std::string_view::npos) {
                entry.decodable = false;  // a control word inside the name
            }
            at = word.end;
            continue;
        }
        const bool hexByte = c == '\\' && at + 1 < rtf.size() && rtf[at + 1] == '\'';
        if (skip > 0) {
            --skip;
            at += hexByte ? 4 : (c == '\\' ? 2 : 1);
            continue;
        }
        if (entry.start == std::string_view::npos) {
            entry.start = at;
        }
        if (c == ';') {
            entry.end = at;
            ended = true;
            ++at;
            continue;
        }
        if (c == '\\' || static_cast<unsigned char>(c) >= 0x80) {
            entry.decodable = false;  // "\'hh" or a raw code-page byte: the reader's to decode
            at += c == '\\' ? 2 : 1;
            continue;
        }
        entry.name.push_back(static_cast<char16_t>(c));
        ++at;
    }
    entry.end = std::min(entry.end == 0 ? rtf.size() : entry.end, rtf.size());
    entry.entryEnd = rtf.size();
    return entry;
}

}  // namespace

PlaceholderFontNames ReplaceUnicodeFontNames(std::string_view rtf) {
    PlaceholderFontNames result;
    constexpr std::string_view kTable = "{\\fonttbl";
    const size_t table = rtf.find(kTable);
    if (table == std::string_view::npos) {
        result.rtf = std::string(rtf);
        return result;
    }
    size_t at = table + kTable.size();
    size_t copied = 0;
    while (at < rtf.size() && rtf[at] != '}') {
        if (rtf[at] != '{') {
            // Text or words between entries (a table of one entry without braces is rare and
            // left to the reader).
            at += rtf[at] == '\\' && at + 1 < rtf.size() ? 2 : 1;
            continue;
        }
        const EntryName entry = ReadEntry(rtf, at + 1);
        if (entry.unicode && entry.decodable && entry.start < entry.end) {
            const std::string placeholder = "VantafileFont" + std::to_string(result.names.size());
            result.rtf.append(rtf.substr(copied, entry.start - copied));
            result.rtf.append(placeholder);
            copied = entry.end;
            result.names.emplace_back(std::u16string(placeholder.begin(), placeholder.end()),
                                      entry.name);
        }
        at = entry.entryEnd;
    }
    result.rtf.append(rtf.substr(copied));
    return result;
}

}  // namespace slib
