// The honest answer of a function whose operation has not landed in this build yet.
#pragma once

#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace functions {

// -4, "Not implemented in this build".
[[noreturn]] inline void ThrowNotImplemented() {
    slib::Throw(slib::kNotAvailable, "Not implemented in this build");
}

}  // namespace functions
