#include "platform_defaults.h"

namespace fmhost::cli {

uint8_t DefaultApplicationKind() {
    return 1;  // desktop application
}

const char16_t* DefaultApplicationVersion() {
    return u"Pro 22.0v1";
}

}  // namespace fmhost::cli
