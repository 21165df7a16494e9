#pragma once
// Making RTF that a rich-edit control wrote in the UTF-8 code page plain ASCII: every non-ASCII
// character becomes the standard Unicode escape, so no reader's code page can change it.

#include <string>
#include <string_view>

namespace slib {

// Each UTF-8 encoded character above U+007F becomes "\uN?" (N the signed 16-bit value of the
// UTF-16 unit, a pair of escapes beyond U+FFFF); a byte that is not part of valid UTF-8 becomes
// "\'hh". ASCII is copied unchanged.
std::string EscapeRtfNonAscii(std::string_view rtf);

// The standard opening "{\rtf1" in place of the UTF-8 variant "{\urtf" (with any version digits)
// that some controls write in the UTF-8 code page: once everything is escaped, it is plain RTF.
std::string StandardRtfOpening(std::string rtf);

}  // namespace slib
