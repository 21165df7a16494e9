#include "foundation/case_fold.h"

namespace slib {

char16_t SimpleUpperCase(char16_t unit) {
    if (unit >= u'a' && unit <= u'z') {
        return static_cast<char16_t>(unit - 0x20);
    }
    if (unit < 0xE0) {
        return unit;
    }
    if (unit <= 0xFE && unit != 0xF7) {  // Latin-1 à..þ, not the division sign
        return static_cast<char16_t>(unit - 0x20);
    }
    if (unit == 0xFF) {
        return 0x178;  // ÿ
    }
    // Latin Extended-A pairs upper/lower as even/odd, except in the 0x139-0x148 and 0x179-0x17E
    // stretches where the pairs start on odd code points; ı, ĸ and ŉ have no simple pair.
    if ((unit >= 0x139 && unit <= 0x148) || (unit >= 0x179 && unit <= 0x17E)) {
        return (unit % 2 == 0) ? static_cast<char16_t>(unit - 1) : unit;
    }
    if (unit >= 0x100 && unit <= 0x177 && unit != 0x131 && unit != 0x138 && unit != 0x149) {
        return (unit % 2 == 1) ? static_cast<char16_t>(unit - 1) : unit;
    }
    if ((unit >= 0x3B1 && unit <= 0x3C9 && unit != 0x3C2) || (unit >= 0x430 && unit <= 0x44F)) {
        return static_cast<char16_t>(unit - 0x20);  // Greek and basic Cyrillic
    }
    if (unit >= 0x450 && unit <= 0x45F) {
        return static_cast<char16_t>(unit - 0x50);  // Cyrillic ѐ..џ
    }
    return unit;
}

bool StartsWithIgnoringCase(std::u16string_view text, std::u16string_view prefix) {
    if (text.size() < prefix.size()) {
        return false;
    }
    for (size_t i = 0; i < prefix.size(); ++i) {
        if (SimpleUpperCase(text[i]) != SimpleUpperCase(prefix[i])) {
            return false;
        }
    }
    return true;
}

bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() && StartsWithIgnoringCase(a, b);
}

}  // namespace slib
