#include "picture/raster_resize.h"

#include <algorithm>
#include <vector>

#include "picture/resample_weights.h"
#include "picture/row_blocks.h"

namespace slib {
namespace {

constexpr int32_t kHalf = 1 << (kWeightBits - 1);

inline uint8_t Clamped(int32_t sum) {
    return static_cast<uint8_t>(std::clamp(sum >> kWeightBits, 0, 255));
}

Raster Blank(uint32_t width, uint32_t height, bool hasAlpha) {
    Raster raster;
    raster.width = width;
    raster.height = height;
    raster.hasAlpha = hasAlpha;
    raster.rgba.resize(raster.stride() * height);
    return raster;
}

// The colour channels scaled by alpha, rounded.
void Premultiply(Raster& raster) {
    for (size_t i = 0; i < raster.rgba.size(); i += 4) {
        const uint32_t alpha = raster.rgba[i + 3];
        for (size_t c = 0; c < 3; ++c) {
            raster.rgba[i + c] = static_cast<uint8_t>((raster.rgba[i + c] * alpha + 127) / 255);
        }
    }
}

// Back to straight alpha; where a filter's overshoot left a channel above its alpha, it saturates.
void Unpremultiply(Raster& raster) {
    for (size_t i = 0; i < raster.rgba.size(); i += 4) {
        const uint32_t alpha = raster.rgba[i + 3];
        for (size_t c = 0; c < 3; ++c) {
            raster.rgba[i + c] = alpha == 0
                                     ? 0
                                     : static_cast<uint8_t>(std::min<uint32_t>(
                                           (raster.rgba[i + c] * 255 + alpha / 2) / alpha, 255));
        }
    }
}

// Alpha of an opaque picture is 255 everywhere and stays so: only three channels are filtered.
template <int kChannels>
void ScaleRows(const Raster& source, Raster& target, const ResampleWeights& axis, uint32_t first,
               uint32_t end) {
    for (uint32_t y = first; y < end; ++y) {
        const uint8_t* in = source.row(y);
        uint8_t* out = target.row(y);
        for (uint32_t x = 0; x < target.width; ++x) {
            const int32_t* weight = &axis.weights[size_t{x} * axis.taps];
            const uint8_t* pixel = in + size_t{axis.first[x]} * 4;
            int32_t sum[4] = {kHalf, kHalf, kHalf, kHalf};
            for (uint32_t k = 0; k < axis.count[x]; ++k, pixel += 4) {
                for (int c = 0; c < kChannels; ++c) {
                    sum[c] += weight[k] * pixel[c];
                }
            }
            for (int c = 0; c < 4; ++c) {
                out[x * 4 + c] = c < kChannels ? Clamped(sum[c]) : 255;
            }
        }
    }
}

void ScaleColumns(const Raster& source, Raster& target, const ResampleWeights& axis, uint32_t first,
                  uint32_t end) {
    const size_t span = target.stride();
    std::vector<int32_t> sums(span);
    for (uint32_t y = first; y < end; ++y) {
        std::fill(sums.begin(), sums.end(), kHalf);
        const int32_t* weight = &axis.weights[size_t{y} * axis.taps];
        for (uint32_t k = 0; k < axis.count[y]; ++k) {
            const uint8_t* in = source.row(axis.first[y] + k);
            const int32_t w = weight[k];
            for (size_t i = 0; i < span; ++i) {
                sums[i] += w * in[i];
            }
        }
        uint8_t* out = target.row(y);
        for (size_t i = 0; i < span; ++i) {
            out[i] = Clamped(sums[i]);
        }
    }
}

Raster ScaleWidth(const Raster& source, uint32_t width) {
    Raster target = Blank(width, source.height, source.hasAlpha);
    const ResampleWeights axis = ComputeResampleWeights(source.width, width);
    const uint64_t work = uint64_t{width} * source.height * axis.taps * 4;
    ForEachRowBlock(source.height, work, [&](uint32_t first, uint32_t end) {
        if (source.hasAlpha) {
            ScaleRows<4>(source, target, axis, first, end);
        } else {
            ScaleRows<3>(source, target, axis, first, end);
        }
    });
    return target;
}

Raster ScaleHeight(const Raster& source, uint32_t height) {
    Raster target = Blank(source.width, height, source.hasAlpha);
    const ResampleWeights axis = ComputeResampleWeights(source.height, height);
    const uint64_t work = uint64_t{height} * source.width * axis.taps * 4;
    ForEachRowBlock(height, work, [&](uint32_t first, uint32_t end) {
        ScaleColumns(source, target, axis, first, end);
    });
    return target;
}

}  // namespace

Raster ResizeRaster(const Raster& source, uint32_t width, uint32_t height) {
    if (width == source.width && height == source.height) {
        return source;
    }
    Raster premultiplied;
    const Raster* input = &source;
    if (source.hasAlpha) {
        premultiplied = source;
        Premultiply(premultiplied);
        input = &premultiplied;
    }
    // An axis that keeps its size is left alone; the other is filtered first when that shrinks
    // the rows the second pass reads.
    Raster result;
    if (width == input->width) {
        result = ScaleHeight(*input, height);
    } else if (height == input->height) {
        result = ScaleWidth(*input, width);
    } else if (uint64_t{width} * input->height <= uint64_t{input->width} * height) {
        result = ScaleHeight(ScaleWidth(*input, width), height);
    } else {
        result = ScaleWidth(ScaleHeight(*input, height), width);
    }
    if (result.hasAlpha) {
        Unpremultiply(result);
    }
    return result;
}

}  // namespace slib
