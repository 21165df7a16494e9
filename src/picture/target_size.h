#pragma once
// The pixel size a conversion produces from the source size and the requested sides.

#include <cstdint>
#include <optional>

namespace slib {

struct PixelSize {
    int32_t width;
    int32_t height;
};

struct SizeRequest {
    std::optional<double> width;
    std::optional<double> height;
    bool proportional = false;
};

// Not proportional: each requested side replaces the source's. Proportional: one side scales the
// other by the same factor; both sides give a box the picture fits in (the smaller factor). A
// factor against a zero source side is 1. Sides round to the nearest pixel, never below 1, and
// a side that is no number or beyond the int32 range saturates there (GDI+ then refuses it).
PixelSize ComputeTargetSize(double sourceWidth, double sourceHeight, const SizeRequest& request);

}  // namespace slib
