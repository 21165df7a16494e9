#include "core/function_registry.h"

#include <algorithm>
#include <mutex>

#include "core/case_mapping.h"

namespace fmhost {

ErrorCode FunctionRegistry::Register(ExternalFunction function) {
    std::unique_lock<std::shared_mutex> lock(mutex_);
    for (const ExternalFunction& known : functions_) {
        if (EqualsIgnoringCase(known.name, function.name) ||
            (known.pluginId == function.pluginId && known.functionId == function.functionId)) {
            return kErrAlreadyRegistered;
        }
    }
    functions_.push_back(std::move(function));
    return kNoError;
}

bool FunctionRegistry::Unregister(uint32_t pluginId, int16_t functionId) {
    std::unique_lock<std::shared_mutex> lock(mutex_);
    auto found = std::find_if(functions_.begin(), functions_.end(), [&](const auto& f) {
        return f.pluginId == pluginId && f.functionId == functionId;
    });
    if (found == functions_.end())
        return false;
    functions_.erase(found);
    return true;
}

std::optional<ExternalFunction> FunctionRegistry::Find(std::u16string_view name) const {
    std::shared_lock<std::shared_mutex> lock(mutex_);
    for (const ExternalFunction& known : functions_) {
        if (EqualsIgnoringCase(known.name, name))
            return known;
    }
    return std::nullopt;
}

size_t FunctionRegistry::Count() const {
    std::shared_lock<std::shared_mutex> lock(mutex_);
    return functions_.size();
}

}  // namespace fmhost
