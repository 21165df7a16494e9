#include "platform_defaults.h"

namespace fmhost::cli {

uint8_t DefaultApplicationKind() {
    return 1;  // desktop application
}

}  // namespace fmhost::cli
