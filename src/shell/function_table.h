// The nineteen functions as the host sees them: id, argument bounds and handler. Names and
// prototypes are not here: they are read from the string table (id + 100) when registering.
#pragma once

#include <cstddef>
#include <cstdint>

#include "fmx_functions.h"

namespace fmlib {

struct FunctionEntry {
    int16_t id;
    int16_t minArgs;
    int16_t maxArgs;  // -1: no upper bound
    FmxExtPluginFn handler;
};

// Low byte: may run on the server; high byte: listed in all of the host's calculation dialogs.
constexpr uint32_t kFunctionFlags = 0xFF01;
constexpr uint32_t kPrototypeResourceBase = 100;
constexpr size_t kFunctionCount = 19;

// Ordered by id, 1 to 19.
extern const FunctionEntry kFunctionTable[kFunctionCount];

}  // namespace fmlib
