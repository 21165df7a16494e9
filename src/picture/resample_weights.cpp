#include "picture/resample_weights.h"

#include <algorithm>
#include <cmath>

namespace slib {
namespace {

constexpr double kPi = 3.14159265358979323846;

double Sinc(double x) {
    if (x == 0) {
        return 1;
    }
    const double px = kPi * x;
    return std::sin(px) / px;
}

double Lanczos3(double x) {
    x = std::fabs(x);
    return x < 3 ? Sinc(x) * Sinc(x / 3) : 0;
}

// B = C = 1/3.
double Mitchell(double x) {
    x = std::fabs(x);
    if (x < 1) {
        return (7 * x * x * x - 12 * x * x + 16.0 / 3) / 6;
    }
    if (x < 2) {
        return (-7.0 / 3 * x * x * x + 12 * x * x - 20 * x + 32.0 / 3) / 6;
    }
    return 0;
}

}  // namespace

ResampleWeights ComputeResampleWeights(uint32_t sourceSize, uint32_t targetSize) {
    const double scale = static_cast<double>(targetSize) / sourceSize;
    const bool shrinking = scale < 1;
    double (*const filter)(double) = shrinking ? Lanczos3 : Mitchell;
    // Shrinking stretches the filter over the source pixels one target pixel covers.
    const double stretch = shrinking ? 1 / scale : 1;
    const double support = std::max((shrinking ? 3.0 : 2.0) * stretch, 0.5);

    ResampleWeights result;
    result.taps = static_cast<uint32_t>(std::min<double>(std::ceil(support * 2) + 1, sourceSize));
    result.first.resize(targetSize);
    result.count.resize(targetSize);
    result.weights.assign(size_t{targetSize} * result.taps, 0);
    std::vector<double> exact(result.taps);
    for (uint32_t i = 0; i < targetSize; ++i) {
        const double centre = (i + 0.5) / scale;
        const auto start = static_cast<uint32_t>(std::max(centre - support + 0.5, 0.0));
        const double end = std::min({centre + support + 0.5, static_cast<double>(sourceSize),
                                     static_cast<double>(start) + result.taps});
        const auto stop = static_cast<uint32_t>(end);
        double sum = 0;
        for (uint32_t j = start; j < stop; ++j) {
            exact[j - start] = filter((j + 0.5 - centre) / stretch);
            sum += exact[j - start];
        }
        const uint32_t count = std::max(stop, start + 1) - start;
        if (sum == 0) {  // cannot happen for these filters; a pixel then copies its nearest
            exact[0] = sum = 1;
        }
        int32_t* weights = &result.weights[size_t{i} * result.taps];
        int32_t total = 0;
        uint32_t largest = 0;
        for (uint32_t k = 0; k < count; ++k) {
            weights[k] = static_cast<int32_t>(std::lround(exact[k] / sum * (1 << kWeightBits)));
            total += weights[k];
            largest = weights[k] > weights[largest] ? k : largest;
        }
        // Rounding must not change a flat area's value: the largest weight takes the remainder.
        weights[largest] += (1 << kWeightBits) - total;
        result.first[i] = start;
        result.count[i] = count;
    }
    return result;
}

}  // namespace slib
