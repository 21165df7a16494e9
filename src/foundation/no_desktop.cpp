#include "foundation/no_desktop.h"

#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace slib {

void ThrowNoInteractiveDesktop() {
    Throw(kUnclassified, "No interactive desktop to show the dialog on");
}

}  // namespace slib
