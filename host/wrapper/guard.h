// The boundary of every exported function: nothing may escape to the plug-in. A failure inside
// the host becomes error-slot code 1 (memory) or 2 (anything else) and the function returns its
// type's zero value; an injected fault does the same without running the body at all.
#pragma once

#include <new>
#include <stdexcept>
#include <type_traits>

#include "fault_injection.h"
#include "fmx_functions.h"

namespace fmwrapper {

template <typename R>
R ZeroValue() {
    if constexpr (!std::is_void_v<R>) {
        return R{};
    }
}

template <typename Body>
auto Guard(FmxErr& err, Body&& body) noexcept -> std::invoke_result_t<Body> {
    using R = std::invoke_result_t<Body>;
    try {
        if (const int32_t injected = faults::TakeCallFault()) {
            err.code = injected;
            return ZeroValue<R>();
        }
        return body();
    } catch (const std::bad_alloc&) {
        err.code = kFmxErrMemory;
    } catch (...) {
        err.code = kFmxErrOther;
    }
    return ZeroValue<R>();
}

// Objects arrive as untyped or possibly null pointers; a null one is a failure of the call.
template <typename T>
T& Ref(void* self) {
    if (self == nullptr)
        throw std::invalid_argument("null object");
    return *static_cast<T*>(self);
}

template <typename T>
const T& Ref(const void* self) {
    if (self == nullptr)
        throw std::invalid_argument("null object");
    return *static_cast<const T*>(self);
}

// References of the C interface are plain pointers in the binary and may be null when a plug-in
// passes one. The empty asm hides from the optimiser that a reference "cannot" be null.
template <typename T>
T& Ref(T& object) {
    T* address = &object;
    asm("" : "+r"(address));
    if (address == nullptr)
        throw std::invalid_argument("null object");
    return *address;
}

template <typename T>
T* New(T value) {
    return new T(std::move(value));
}

}  // namespace fmwrapper
