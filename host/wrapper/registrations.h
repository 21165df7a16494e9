// The host's table of plug-in functions and script steps, keyed by plug-in id and function id,
// and the log of every register and unregister call in the order the plug-ins made them.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "core/function_registry.h"
#include "fmx_functions.h"

namespace fmwrapper {

struct FunctionRecord {
    uint32_t pluginId = 0;  // four characters, first in the high byte
    int16_t functionId = 0;
    std::u16string name;
    std::u16string prototype;
    std::u16string description;
    int16_t minArgs = 0;
    int16_t maxArgs = -1;
    uint32_t flags = 0;
    bool scriptStep = false;
    FmxExtPluginFn callback = nullptr;
};

enum class RegistrationKind : int32_t {
    kRegisterFunction = 0,
    kUnregisterFunction = 1,
    kRegisterScriptStep = 2,
    kUnregisterScriptStep = 3,
};

struct RegistrationEvent {
    RegistrationKind kind;
    FunctionRecord function;  // only the ids are known for an unregistration
    int16_t result = 0;
    bool injected = false;  // the result came from an injected fault
};

class Registrations {
  public:
    explicit Registrations(fmhost::FunctionRegistry& registry) : registry_(registry) {}

    int16_t RegisterFunction(FunctionRecord function);
    int16_t UnregisterFunction(uint32_t pluginId, int16_t functionId);
    int16_t RegisterScriptStep(FunctionRecord step);
    int16_t UnregisterScriptStep(uint32_t pluginId, int16_t stepId);

    // What is registered now, in the order it was registered.
    std::vector<FunctionRecord> Current() const;
    std::vector<RegistrationEvent> Log() const;
    void ClearLog();

    // Withdraws everything whose callback lies in `module` (a plug-in about to be unloaded
    // must leave nothing callable behind); returns how many entries went.
    size_t PurgeModule(const void* module);

  private:
    int16_t Check(const FunctionRecord& function) const;
    void Record(RegistrationKind kind, const FunctionRecord& function, int16_t result,
                bool injected);

    fmhost::FunctionRegistry& registry_;
    mutable std::mutex mutex_;
    std::vector<FunctionRecord> current_;
    std::vector<RegistrationEvent> log_;
};

}  // namespace fmwrapper
