// POSIX systems show no error boxes of their own: the scope only counts itself, so that the
// places that hold it can be checked on every system.
#include "foundation/error_boxes.h"

namespace slib {

namespace {

thread_local uint32_t tScopes = 0;

}  // namespace

NoErrorBoxes::NoErrorBoxes() : previous_(tScopes++), restore_(true) {}

NoErrorBoxes::~NoErrorBoxes() {
    if (restore_) {
        tScopes = previous_;
    }
}

bool ErrorBoxesAreOff() {
    return tScopes != 0;
}

}  // namespace slib
