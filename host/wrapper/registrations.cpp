#include "registrations.h"

#include <algorithm>

#include "external_call.h"
#include "fault_injection.h"
#include "library_module.h"

namespace fmwrapper {

// A registration the calculation engine could not honour is refused with the generic
// calculation error; a taken name with the engine's own "already registered" error.
int16_t Registrations::Check(const FunctionRecord& function) const {
    const bool badBounds = function.minArgs < 0 || function.maxArgs < -1 ||
                           (function.maxArgs >= 0 && function.maxArgs < function.minArgs);
    if (function.callback == nullptr || function.name.empty() ||
        (!function.scriptStep && badBounds)) {
        return fmhost::kErrCalcGeneric;
    }
    return 0;
}

int16_t Registrations::RegisterFunction(FunctionRecord function) {
    function.scriptStep = false;
    if (const int16_t injected = faults::RegistrationFault(function.functionId)) {
        Record(RegistrationKind::kRegisterFunction, function, injected, true);
        return injected;
    }
    int16_t result = Check(function);
    if (result == 0) {
        fmhost::ExternalFunction entry;
        entry.pluginId = function.pluginId;
        entry.functionId = function.functionId;
        entry.name = function.name;
        entry.minArgs = function.minArgs;
        entry.maxArgs = function.maxArgs;
        entry.call = MakeExternalCall(function.callback, function.functionId);
        std::lock_guard<std::mutex> lock(mutex_);
        result = registry_.Register(std::move(entry));
        if (result == 0)
            current_.push_back(function);
    }
    Record(RegistrationKind::kRegisterFunction, function, result, false);
    return result;
}

// Withdrawing what is not registered is not an error: plug-ins unregister their whole table
// at shutdown whatever happened at start-up.
int16_t Registrations::UnregisterFunction(uint32_t pluginId, int16_t functionId) {
    FunctionRecord function;
    function.pluginId = pluginId;
    function.functionId = functionId;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        auto found = std::find_if(current_.begin(), current_.end(), [&](const FunctionRecord& f) {
            return !f.scriptStep && f.pluginId == pluginId && f.functionId == functionId;
        });
        if (found != current_.end()) {
            function = *found;
            registry_.Unregister(pluginId, functionId);
            current_.erase(found);
        }
    }
    Record(RegistrationKind::kUnregisterFunction, function, 0, false);
    return 0;
}

// Script steps cannot run here (there are no scripts), but they are kept and listed.
int16_t Registrations::RegisterScriptStep(FunctionRecord step) {
    step.scriptStep = true;
    int16_t result = Check(step);
    if (result == 0) {
        std::lock_guard<std::mutex> lock(mutex_);
        const bool taken = std::any_of(current_.begin(), current_.end(), [&](const auto& f) {
            return f.scriptStep && f.pluginId == step.pluginId && f.functionId == step.functionId;
        });
        if (taken) {
            result = fmhost::kErrAlreadyRegistered;
        } else {
            current_.push_back(step);
        }
    }
    Record(RegistrationKind::kRegisterScriptStep, step, result, false);
    return result;
}

int16_t Registrations::UnregisterScriptStep(uint32_t pluginId, int16_t stepId) {
    FunctionRecord step;
    step.pluginId = pluginId;
    step.functionId = stepId;
    step.scriptStep = true;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        auto found = std::find_if(current_.begin(), current_.end(), [&](const FunctionRecord& f) {
            return f.scriptStep && f.pluginId == pluginId && f.functionId == stepId;
        });
        if (found != current_.end()) {
            step = *found;
            current_.erase(found);
        }
    }
    Record(RegistrationKind::kUnregisterScriptStep, step, 0, false);
    return 0;
}

std::vector<FunctionRecord> Registrations::Current() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return current_;
}

std::vector<RegistrationEvent> Registrations::Log() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return log_;
}

void Registrations::ClearLog() {
    std::lock_guard<std::mutex> lock(mutex_);
    log_.clear();
}

size_t Registrations::PurgeModule(const void* module) {
    std::lock_guard<std::mutex> lock(mutex_);
    size_t purged = 0;
    for (auto it = current_.begin(); it != current_.end();) {
        if (LibraryContaining(reinterpret_cast<const void*>(it->callback)) == module) {
            if (!it->scriptStep)
                registry_.Unregister(it->pluginId, it->functionId);
            it = current_.erase(it);
            ++purged;
        } else {
            ++it;
        }
    }
    return purged;
}

void Registrations::Record(RegistrationKind kind, const FunctionRecord& function, int16_t result,
                           bool injected) {
    std::lock_guard<std::mutex> lock(mutex_);
    RegistrationEvent event{kind, function, result, injected};
    event.function.callback = nullptr;
    log_.push_back(std::move(event));
}

}  // namespace fmwrapper
