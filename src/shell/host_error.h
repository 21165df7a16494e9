// Turns the host's per-call error slot into C++ exceptions. Every FM_* call of the plug-in goes
// through HostCall, so a host failure can never be mistaken for a result.
#pragma once

#include <exception>
#include <new>
#include <type_traits>
#include <utility>

#include "fmx_functions.h"

namespace fmlib {

// Slot code 1. Carries the text the host's own runtime gives an allocation failure, which is
// what reaches $$VFile_LastErrorMessage.
class HostAllocationError : public std::bad_alloc {
  public:
    const char* what() const noexcept override { return "bad allocation"; }
};

// 1 raises HostAllocationError (a std::bad_alloc), 2 a plain std::exception; 0 and any code the
// host does not define pass silently.
void ThrowIfHostFailed(const FmxErr& slot);

// Calls `function` with `args` and a fresh slot appended, then checks the slot.
template <typename Function, typename... Args>
auto HostCall(Function function, Args&&... args) {
    FmxErr slot{kFmxErrSlotVersion, kFmxErrNone};
    if constexpr (std::is_void_v<decltype(function(std::forward<Args>(args)..., slot))>) {
        function(std::forward<Args>(args)..., slot);
        ThrowIfHostFailed(slot);
    } else {
        auto value = function(std::forward<Args>(args)..., slot);
        ThrowIfHostFailed(slot);
        return value;
    }
}

}  // namespace fmlib
