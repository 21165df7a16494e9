// The POSIX build serves FileMaker Server on Linux alone.
#include "shell/system_name.h"

namespace fmlib {

const char16_t* SystemName() {
    return u"Linux";
}

}  // namespace fmlib
