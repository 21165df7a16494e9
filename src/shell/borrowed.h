// Objects the host lends through getters. A getter that lends nothing without reporting a
// failure is treated as a host failure rather than dereferenced.
#pragma once

#include <exception>

namespace fmlib {

template <typename T>
T& Borrowed(T* object) {
    if (object == nullptr) {
        throw std::exception();
    }
    return *object;
}

}  // namespace fmlib
