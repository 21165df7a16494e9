#include "core/case_mapping.h"

namespace fmhost {
namespace {

// Latin Extended-A pairs: upper case at the even (or, in two blocks, odd) code unit.
bool IsLatinExtendedUpper(char16_t c) {
    if (c >= 0x0100 && c <= 0x0137)
        return c % 2 == 0 && c != 0x0130;
    if (c >= 0x0139 && c <= 0x0148)
        return c % 2 == 1;
    if (c >= 0x014A && c <= 0x0177)
        return c % 2 == 0;
    if (c >= 0x0179 && c <= 0x017E)
        return c % 2 == 1;
    return false;
}

bool IsLatinExtendedLower(char16_t c) {
    if (c >= 0x0100 && c <= 0x0137)
        return c % 2 == 1 && c != 0x0131;
    if (c >= 0x0139 && c <= 0x0148)
        return c % 2 == 0;
    if (c >= 0x014A && c <= 0x0177)
        return c % 2 == 1;
    if (c >= 0x0179 && c <= 0x017E)
        return c % 2 == 0;
    return false;
}

}  // namespace

char16_t ToUpper(char16_t c) {
    if (c < 0x80)
        return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c;
    if ((c >= 0x00E0 && c <= 0x00FE && c != 0x00F7))
        return static_cast<char16_t>(c - 32);
    if (c == 0x00FF)
        return 0x0178;
    if (IsLatinExtendedLower(c))
        return static_cast<char16_t>(c - 1);
    if (c == 0x03C2)
        return 0x03A3;  // final sigma
    if (c >= 0x03B1 && c <= 0x03C9)
        return static_cast<char16_t>(c - 32);
    if (c >= 0x0430 && c <= 0x044F)
        return static_cast<char16_t>(c - 32);
    if (c >= 0x0450 && c <= 0x045F)
        return static_cast<char16_t>(c - 80);
    if (c >= 0xFF41 && c <= 0xFF5A)
        return static_cast<char16_t>(c - 32);
    return c;
}

char16_t ToLower(char16_t c) {
    if (c < 0x80)
        return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c;
    if ((c >= 0x00C0 && c <= 0x00DE && c != 0x00D7))
        return static_cast<char16_t>(c + 32);
    if (c == 0x0178)
        return 0x00FF;
    if (IsLatinExtendedUpper(c))
        return static_cast<char16_t>(c + 1);
    if (c >= 0x0391 && c <= 0x03A9 && c != 0x03A2)
        return static_cast<char16_t>(c + 32);
    if (c >= 0x0410 && c <= 0x042F)
        return static_cast<char16_t>(c + 32);
    if (c >= 0x0400 && c <= 0x040F)
        return static_cast<char16_t>(c + 80);
    if (c >= 0xFF21 && c <= 0xFF3A)
        return static_cast<char16_t>(c + 32);
    return c;
}

std::u16string ToUpper(std::u16string_view text) {
    std::u16string out(text);
    for (char16_t& c : out)
        c = ToUpper(c);
    return out;
}

std::u16string ToLower(std::u16string_view text) {
    std::u16string out(text);
    for (char16_t& c : out)
        c = ToLower(c);
    return out;
}

int CompareIgnoringCase(std::u16string_view a, std::u16string_view b) {
    const size_t n = a.size() < b.size() ? a.size() : b.size();
    for (size_t i = 0; i < n; ++i) {
        const char16_t x = ToLower(a[i]);
        const char16_t y = ToLower(b[i]);
        if (x != y)
            return x < y ? -1 : 1;
    }
    if (a.size() == b.size())
        return 0;
    return a.size() < b.size() ? -1 : 1;
}

bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() && CompareIgnoringCase(a, b) == 0;
}

}  // namespace fmhost
