// Argument checks shared by the function handlers. Both raise slib::Exception with a
// slib::BasicError of -50, which the call frame reports.
#pragma once

#include <cstdint>

#include "fmx_functions.h"

namespace fmlib {

// "Not enough parameters" when fewer than `count` arguments arrived.
void RequireParameters(const FmxDataVect& args, uint32_t count);
// "Path parameter must be text" unless argument `index` exists and is of native type text.
void RequireTextParameter(const FmxDataVect& args, uint32_t index);

}  // namespace fmlib
