#include "shell/registration.h"

#include "shell/host_env.h"
#include "shell/host_objects.h"
#include "shell/resource_text.h"

namespace fmlib {

namespace {

QuadCharPtr PluginId() {
    return NewQuadChar('Q', 'r', 'v', 'F');
}

void UnregisterDownFrom(int16_t highestId) {
    QuadCharPtr pluginId = PluginId();
    for (int16_t id = highestId; id >= 1; --id) {
        try {
            ExprEnvUnRegisterExternalFunction(*pluginId, id);
        } catch (...) {
            // Withdrawing the rest matters more than one refusal.
        }
    }
}

}  // namespace

FmxErrcode RegisterFunction(int16_t id, int16_t minArgs, int16_t maxArgs, uint32_t flags,
                            FmxExtPluginFn handler) {
    QuadCharPtr pluginId = PluginId();
    TextPtr name = NewText();
    TextPtr prototype = NewText();
    LoadResourceText(kPrototypeResourceBase + static_cast<uint32_t>(id), *name, true);
    LoadResourceText(kPrototypeResourceBase + static_cast<uint32_t>(id), *prototype, false);
    return ExprEnvRegisterExternalFunction(*pluginId, id, *name, *prototype, minArgs, maxArgs,
                                           flags, handler);
}

bool RegisterFunctions(const FunctionTable& table) {
    for (const FunctionEntry& entry : table) {
        FmxErrcode error = 0;
        try {
            error = RegisterFunction(entry.id, entry.minArgs, entry.maxArgs, kFunctionFlags,
                                     entry.handler);
        } catch (...) {
            error = -1;
        }
        if (error != 0) {
            UnregisterDownFrom(static_cast<int16_t>(entry.id - 1));
            return false;
        }
    }
    return true;
}

void UnregisterFunctions(const FunctionTable& table) {
    UnregisterDownFrom(static_cast<int16_t>(table.size()));
}

}  // namespace fmlib
