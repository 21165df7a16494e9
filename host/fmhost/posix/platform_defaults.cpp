#include "platform_defaults.h"

namespace fmhost::cli {

uint8_t DefaultApplicationKind() {
    return 7;  // server-side scripting
}

}  // namespace fmhost::cli
