#include "foundation/error_boxes.h"

#include <windows.h>

namespace slib {

NoErrorBoxes::NoErrorBoxes() {
    DWORD previous = 0;
    if (SetThreadErrorMode(GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &previous)) {
        previous_ = previous;
        restore_ = true;
    }
}

NoErrorBoxes::~NoErrorBoxes() {
    if (restore_) {
        SetThreadErrorMode(previous_, nullptr);
    }
}

bool ErrorBoxesAreOff() {
    return (GetThreadErrorMode() & SEM_FAILCRITICALERRORS) != 0;
}

}  // namespace slib
