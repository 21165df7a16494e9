// Publishing the function table to the host and withdrawing it, under the plug-in id "QrvF".
#pragma once

#include <cstdint>

#include "fmx_functions.h"
#include "shell/function_entry.h"

namespace fmlib {

// Registers the table's ids in ascending order. On the first failure at id k (a host error code
// or a host failure) unregisters k-1 down to 1 and returns false; k itself is not unregistered.
bool RegisterFunctions(const FunctionTable& table);
// Unregisters the highest id down to 1, ignoring the host's answers (it ignores ids it does not
// know).
void UnregisterFunctions(const FunctionTable& table);
// One registration; the host's error (0 = registered).
FmxErrcode RegisterFunction(int16_t id, int16_t minArgs, int16_t maxArgs, uint32_t flags,
                            FmxExtPluginFn handler);

}  // namespace fmlib
