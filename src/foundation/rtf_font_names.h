#pragma once
// Font names in any script through a rich-edit reader that takes only code-page bytes in a font
// table: a name written with Unicode escapes ("\u-211?\u-205?", as our own RTF has it) comes back
// from such a reader as "?". Before reading, each such name is swapped for a plain ASCII
// placeholder; after reading, the placeholder is swapped back for the name.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace slib {

struct PlaceholderFontNames {
    std::string rtf;  // the document with the placeholders in its font table
    // Placeholder and the name it stands for, in font-table order.
    std::vector<std::pair<std::u16string, std::u16string>> names;
};

// The font table is the first "{\fonttbl" group; a font's name is the text of its entry outside
// nested groups, up to ";". Only names holding "\uN" and otherwise plain ASCII are swapped (a
// name with code-page bytes or "\'hh" is the reader's to decode); "\ucN" sets how many fallback
// characters follow each "\uN" (one by default). Malformed RTF is returned unchanged where it
// stops making sense, never read beyond its end.
PlaceholderFontNames ReplaceUnicodeFontNames(std::string_view rtf);

}  // namespace slib
