// What the function layer hands the shell: the functions to register (id, argument bounds and
// handler) and what to do when the host ends a session. The list itself belongs to the function
// layer (functions/function_table.cpp); the shell only receives it. Names and prototypes are not
// here: they are read from the string table (id + 100).
#pragma once

#include <cstdint>
#include <vector>

#include "fmx_functions.h"

namespace fmlib {

struct FunctionEntry {
    int16_t id;
    int16_t minArgs;
    int16_t maxArgs;  // -1: no upper bound
    FmxExtPluginFn handler;
};

// Ordered by id, from 1 up without gaps.
using FunctionTable = std::vector<FunctionEntry>;

// Low byte: may run on the server; high byte: listed in all of the host's calculation dialogs.
constexpr uint32_t kFunctionFlags = 0xFF01;
constexpr uint32_t kPrototypeResourceBase = 100;

struct FunctionLayer {
    FunctionTable functions;
    // The host ended a session (a client left FileMaker Server): forget what it left behind.
    void (*endSession)(uint64_t sessionId);
};

// Defined by the function layer; the entry point hands it on.
const FunctionLayer& PluginFunctions();

}  // namespace fmlib
