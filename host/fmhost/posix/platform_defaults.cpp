#include "platform_defaults.h"

namespace fmhost::cli {

uint8_t DefaultApplicationKind() {
    return 7;  // server-side scripting
}

const char16_t* DefaultApplicationVersion() {
    return u"Server 22.0v1";
}

}  // namespace fmhost::cli
