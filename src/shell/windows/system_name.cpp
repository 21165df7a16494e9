#include "shell/system_name.h"

namespace fmlib {

const char16_t* SystemName() {
    return u"Windows";
}

}  // namespace fmlib
