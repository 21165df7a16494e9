#pragma once
// Turning a Raster upright by the steps UprightTurnFor gives for its EXIF orientation, so the
// rule of which turn fixes which orientation lives in one place for both systems.

#include "picture/raster.h"
#include "picture/upright_turn.h"

namespace slib {

// `source` with each of `turn`'s steps applied in order (kRotate90 is clockwise).
Raster TurnRaster(Raster source, const UprightTurn& turn);

}  // namespace slib
