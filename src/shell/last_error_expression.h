// The calculation that records a failure in the host's globals $$VFile_LastError and
// $$VFile_LastErrorMessage. Portable: no host call is made here.
#pragma once

#include <cstdint>
#include <string>

namespace fmlib {

// Let ( [ $$VFile_LastError = <code> ; $$VFile_LastErrorMessage = "<message>" ] ; "" )
// The message goes in as it is: a quote in it makes the expression malformed, and the host's
// refusal to evaluate it is accepted rather than repaired.
std::string LastErrorExpression(int16_t code, const std::string& message);

// The two read-back expressions of VFile_Get: an unset global reads "No Error Message", for
// the code as well.
extern const char kReadLastErrorExpression[];
extern const char kReadLastErrorMessageExpression[];

}  // namespace fmlib
