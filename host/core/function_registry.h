// Plug-in functions known to the calculation engine. The host fills the registry as plug-ins
// register; the engine looks names up (without regard to case) and calls a copy of the entry,
// so no lock is held while the plug-in runs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <shared_mutex>
#include <string>
#include <vector>

#include "core/calc_errors.h"
#include "core/value.h"

namespace fmhost {

class EvalContext;

struct ExternalFunction {
    // Receives the calling context (for nested evaluation), the evaluated arguments and a
    // result initialised to an empty value; returns 0 or an error that fails the calculation.
    using Callable = std::function<ErrorCode(EvalContext& context, const std::vector<Value>& args,
                                             Value& result)>;

    uint32_t pluginId = 0;  // the registering plug-in's four-character code
    int16_t functionId = 0;
    std::u16string name;
    int16_t minArgs = 0;
    int16_t maxArgs = -1;  // -1 = unlimited
    Callable call;
};

class FunctionRegistry {
  public:
    // kErrAlreadyRegistered when the name (any case) or the (plug-in, id) pair is taken.
    ErrorCode Register(ExternalFunction function);
    // False when nothing was registered under that pair.
    bool Unregister(uint32_t pluginId, int16_t functionId);
    std::optional<ExternalFunction> Find(std::u16string_view name) const;
    size_t Count() const;

  private:
    mutable std::shared_mutex mutex_;
    std::vector<ExternalFunction> functions_;
};

}  // namespace fmhost
