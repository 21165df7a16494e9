#pragma once
// The running process's id, as the system numbers it: part of the names we leave beside files,
// so that two processes never pick the same one.

#include <cstdint>

namespace slib {

uint32_t CurrentProcessNumber();

}  // namespace slib
