#include "picture/target_size.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace slib {
namespace {

double Factor(double requested, double source) {
    return source == 0 ? 1.0 : requested / source;
}

int32_t ToPixels(double side) {
    constexpr double kMax = std::numeric_limits<int32_t>::max();
    if (std::isnan(side) || side < 1.0) {
        return 1;
    }
    const double rounded = std::round(side);
    return rounded >= kMax ? std::numeric_limits<int32_t>::max() : static_cast<int32_t>(rounded);
}

}  // namespace

PixelSize ComputeTargetSize(double sourceWidth, double sourceHeight, const SizeRequest& request) {
    double width = sourceWidth;
    double height = sourceHeight;
    const auto& w = request.width;
    const auto& h = request.height;
    if (!request.proportional) {
        width = w.value_or(width);
        height = h.value_or(height);
    } else if (w && h) {
        const double factor = std::min(Factor(*w, sourceWidth), Factor(*h, sourceHeight));
        width *= factor;
        height *= factor;
    } else if (w) {
        height *= Factor(*w, sourceWidth);
        width = *w;
    } else if (h) {
        width *= Factor(*h, sourceHeight);
        height = *h;
    }
    return {ToPixels(width), ToPixels(height)};
}

}  // namespace slib
