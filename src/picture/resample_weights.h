#pragma once
// The weights one axis of a resize applies: for each target pixel, the run of source pixels it
// reads and how much each counts, computed once per axis so the pixel loops only multiply.

#include <cstdint>
#include <vector>

namespace slib {

// Weights are fixed point with this many fraction bits: 255 times the largest sum of absolute
// weights a filter here yields (about 1.3) still fits an int32 accumulator.
constexpr int kWeightBits = 22;

struct ResampleWeights {
    std::vector<uint32_t> first;   // per target pixel: the first source pixel read
    std::vector<uint32_t> count;   // per target pixel: how many source pixels are read
    uint32_t taps = 0;             // the widest run; each target pixel's weights start at i * taps
    std::vector<int32_t> weights;  // each run sums to exactly 1 << kWeightBits
};

// The weights taking `sourceSize` pixels to `targetSize` (both at least 1). Shrinking uses
// Lanczos-3 widened by the shrink factor, so every source pixel counts (no aliasing); enlarging
// uses Mitchell-Netravali, which rings less. The run is cut at the picture's edges and the
// weights left are scaled to sum to one, so an edge is never mixed with black.
ResampleWeights ComputeResampleWeights(uint32_t sourceSize, uint32_t targetSize);

}  // namespace slib
