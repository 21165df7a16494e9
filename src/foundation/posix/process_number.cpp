#include "foundation/process_number.h"

#include <unistd.h>

namespace slib {

uint32_t CurrentProcessNumber() {
    return static_cast<uint32_t>(getpid());
}

}  // namespace slib
