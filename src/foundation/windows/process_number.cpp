#include "foundation/process_number.h"

#include <windows.h>

namespace slib {

uint32_t CurrentProcessNumber() {
    return GetCurrentProcessId();
}

}  // namespace slib
