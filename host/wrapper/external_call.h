// How the calculation engine calls a plug-in function: the arguments become a DataVect, the
// result a Data, and the environment is the calling calculation's, so the plug-in's nested
// evaluations share its session, globals and $locals.
#pragma once

#include <cstdint>

#include "core/function_registry.h"
#include "fmx_functions.h"

namespace fmwrapper {

fmhost::ExternalFunction::Callable MakeExternalCall(FmxExtPluginFn callback, int16_t functionId);

}  // namespace fmwrapper
