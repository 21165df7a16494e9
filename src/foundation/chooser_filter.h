#pragma once
// The filter of the open-file dialog that lists only some extensions. The dialog takes its filter
// as pairs of zero-terminated strings (name, pattern) ended by an empty one; we write it with "|"
// for the zeros so it can be read, and turn them into zeros only when the dialog gets it.

#include <string>
#include <vector>

namespace slib {

// "Allowed files:|*.txt;*.csv|" for {"txt", "csv"}. Extensions are taken as given (no dot); an
// empty list gives "Allowed files:||", which callers avoid by passing no filter at all.
std::u16string AllowedFilesFilter(const std::vector<std::u16string>& extensions);

// `filter` with every "|" turned into a zero, plus the zero that ends the list.
std::u16string DialogFilterBuffer(const std::u16string& filter);

}  // namespace slib
