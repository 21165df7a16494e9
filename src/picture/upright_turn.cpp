#include "picture/upright_turn.h"

namespace slib {

UprightTurn UprightTurnFor(uint16_t orientation) {
    switch (orientation) {
        case 2:
            return {{kFlipHorizontal, kRotateNone}, false};
        case 3:
            return {{kRotate180, kRotateNone}, false};
        case 4:
            return {{kFlipVertical, kRotateNone}, false};
        case 5:
            return {{kRotate90, kFlipHorizontal}, true};
        case 6:
            return {{kRotate90, kRotateNone}, true};
        case 7:
            return {{kRotate270, kFlipHorizontal}, true};
        case 8:
            return {{kRotate270, kRotateNone}, true};
        default:
            return {{kRotateNone, kRotateNone}, false};
    }
}

}  // namespace slib
