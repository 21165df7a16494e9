#pragma once
// The one answer of an operation this system's build cannot do (a system engine it lacks, a
// job the system's administrator does instead): -4 with a message naming what and why, before
// anything is touched, so a script can tell it from a failure of the operation itself.

#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace slib {

[[noreturn]] inline void ThrowUnavailableHere(const char* message) {
    Throw(kNotAvailable, message);
}

}  // namespace slib
