#pragma once
// How a picture stored with an EXIF orientation is turned upright, as GDI+ rotate-flip steps.
// The mirrored orientations 5 and 7 are a rotation followed by a horizontal flip rather than
// GDI+'s combined values, which Wine applies the wrong way round.

#include <cstdint>

namespace slib {

// GDI+ RotateFlipType values used here.
enum RotateFlip : int32_t {
    kRotateNone = 0,
    kRotate90 = 1,
    kRotate180 = 2,
    kRotate270 = 3,
    kFlipHorizontal = 4,
    kFlipVertical = 6,
};

struct UprightTurn {
    int32_t steps[2];  // applied in order; kRotateNone is no step
    bool swapsSides;   // the stored picture is lying on its side (5 to 8)
};

// Orientation 1 and any value outside 1 to 8 need no turn.
UprightTurn UprightTurnFor(uint16_t orientation);

}  // namespace slib
