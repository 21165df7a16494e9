// The calculation that records a failure in the host's globals $$VFile_LastError and
// $$VFile_LastErrorMessage. Portable: no host call is made here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace fmlib {

// `text` as a quoted text constant of the host's calculations that reads back as the text itself:
// `"` and `\` are escaped, a pilcrow is written `\¶`, a carriage return as `¶` (the host's own
// paragraph mark). Every other control character (U+0000 to U+001F, U+007F) cannot be read back
// as itself by every host, so it is shown as its visible symbol, U+2400 plus its code (a tab as
// ␉, a line feed as ␊, NUL as ␀) and U+2421 (␡) for DEL.
std::u16string CalculationTextConstant(std::u16string_view text);

// Let ( [ $$VFile_LastError = <code> ; $$VFile_LastErrorMessage = <constant> ] ; "" )
// `message` is UTF-8 (a malformed sequence reads back as U+FFFD), made a text constant as above.
std::u16string LastErrorExpression(int16_t code, std::string_view message);

// The two read-back expressions of VFile_Get: an unset global reads "No Error Message", for
// the code as well.
extern const char kReadLastErrorExpression[];
extern const char kReadLastErrorMessageExpression[];

}  // namespace fmlib
