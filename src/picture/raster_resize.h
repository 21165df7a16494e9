#pragma once
// Scaling a Raster to any size with a filter that reads every source pixel a target pixel
// covers (see resample_weights.h), in premultiplied alpha, so a transparent pixel's colour never
// bleeds into its neighbours.

#include <cstdint>

#include "picture/raster.h"

namespace slib {

// `source` at `width` x `height` (each at least 1); an exact copy when the size is the same.
Raster ResizeRaster(const Raster& source, uint32_t width, uint32_t height);

}  // namespace slib
