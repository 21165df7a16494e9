// The portable scaler and turner on pictures made in memory: flat areas, ramps, transparent
// edges and every EXIF orientation, checked against what the picture must look like.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

#include "picture/raster_resize.h"
#include "picture/raster_turn.h"
#include "picture/resample_weights.h"

namespace {

using slib::Raster;

Raster Painted(uint32_t width, uint32_t height,
               const std::function<uint32_t(uint32_t x, uint32_t y)>& rgbaAt) {
    Raster raster;
    raster.width = width;
    raster.height = height;
    raster.rgba.resize(raster.stride() * height);
    for (uint32_t y = 0; y < height; ++y) {
        for (uint32_t x = 0; x < width; ++x) {
            const uint32_t rgba = rgbaAt(x, y);
            for (int c = 0; c < 4; ++c) {
                raster.row(y)[x * 4 + c] = static_cast<uint8_t>(rgba >> (24 - 8 * c));
            }
            raster.hasAlpha = raster.hasAlpha || (rgba & 0xFF) != 0xFF;
        }
    }
    return raster;
}

uint32_t PixelAt(const Raster& raster, uint32_t x, uint32_t y) {
    const uint8_t* p = raster.row(y) + x * 4;
    return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3];
}

struct Sizes {
    uint32_t fromWidth, fromHeight, toWidth, toHeight;
};

const Sizes kSizes[] = {
    {1, 1, 1, 1},     {1, 1, 7, 5},       {13, 9, 1, 1}, {100, 1, 3, 1},  {1, 100, 1, 17},
    {40, 30, 400, 3}, {640, 480, 31, 29}, {9, 9, 10, 8}, {3, 2, 2000, 2}, {2000, 3, 5, 3},
};

TEST(ResampleWeights, EachRunStaysInsideTheSourceAndSumsToOne) {
    for (const auto& s : kSizes) {
        for (const auto& [from, to] :
             {std::pair{s.fromWidth, s.toWidth}, {s.fromHeight, s.toHeight}}) {
            SCOPED_TRACE(std::to_string(from) + " -> " + std::to_string(to));
            const slib::ResampleWeights axis = slib::ComputeResampleWeights(from, to);
            ASSERT_EQ(axis.first.size(), to);
            for (uint32_t i = 0; i < to; ++i) {
                ASSERT_GE(axis.count[i], 1u);
                ASSERT_LE(axis.count[i], axis.taps);
                ASSERT_LE(axis.first[i] + axis.count[i], from);
                int64_t sum = 0;
                for (uint32_t k = 0; k < axis.count[i]; ++k) {
                    sum += axis.weights[size_t{i} * axis.taps + k];
                }
                EXPECT_EQ(sum, 1 << slib::kWeightBits) << i;
            }
        }
    }
}

TEST(ResizeRaster, AFlatPictureStaysFlatAtEverySize) {
    for (const uint32_t colour : {0xFFFFFFFFu, 0x000000FFu, 0x3C8AE1FFu, 0x3C8AE180u}) {
        for (const auto& s : kSizes) {
            SCOPED_TRACE(std::to_string(s.toWidth) + "x" + std::to_string(s.toHeight));
            const Raster out = slib::ResizeRaster(
                Painted(s.fromWidth, s.fromHeight, [&](auto, auto) { return colour; }), s.toWidth,
                s.toHeight);
            ASSERT_EQ(out.width, s.toWidth);
            ASSERT_EQ(out.height, s.toHeight);
            ASSERT_EQ(out.rgba.size(), size_t{s.toWidth} * s.toHeight * 4);
            EXPECT_EQ(out.hasAlpha, (colour & 0xFF) != 0xFF);
            for (uint32_t y = 0; y < out.height; ++y) {
                for (uint32_t x = 0; x < out.width; ++x) {
                    // Premultiplying rounds a half-transparent colour by at most one step.
                    const uint32_t got = PixelAt(out, x, y);
                    for (int shift = 0; shift < 32; shift += 8) {
                        ASSERT_LE(std::abs(int(got >> shift & 0xFF) - int(colour >> shift & 0xFF)),
                                  (colour & 0xFF) == 0xFF ? 0 : 1)
                            << x << "," << y;
                    }
                }
            }
        }
    }
}

TEST(ResizeRaster, TheSameSizeIsAnExactCopy) {
    const Raster noise = Painted(
        37, 23, [](uint32_t x, uint32_t y) { return (x * 2654435761u) ^ (y * 40503u * 65537u); });
    const Raster out = slib::ResizeRaster(noise, 37, 23);
    EXPECT_EQ(out.rgba, noise.rgba);
    EXPECT_EQ(out.hasAlpha, noise.hasAlpha);
}

// A ramp is linear, so any symmetric filter centred right gives the ramp's value at the target
// pixel's centre: a half-pixel slip in the mapping shows at once.
TEST(ResizeRaster, ARampKeepsItsValuesAtTheTargetPixelCentres) {
    const struct { uint32_t from, to; } cases[] = {{240, 80}, {240, 97}, {60, 240}, {61, 250}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.from) + " -> " + std::to_string(c.to));
        const Raster ramp =
            Painted(c.from, 4, [](uint32_t x, uint32_t) { return (x + 8) << 24 | 0xFF; });
        const Raster out = slib::ResizeRaster(ramp, c.to, 4);
        const double scale = double(c.from) / c.to;
        // Away from the edges, where the filter's run is cut.
        for (uint32_t x = 0; x < c.to; ++x) {
            const double centre = (x + 0.5) * scale - 0.5;
            if (centre < 4 * scale + 3 || centre > c.from - 4 * scale - 4) {
                continue;
            }
            EXPECT_NEAR(out.row(2)[x * 4], centre + 8, 0.75) << x;
        }
    }
}

// Opaque red beside transparent green: premultiplied, the green weighs nothing, so no pixel
// that shows at all turns green, and the transparent side stays transparent away from the seam.
TEST(ResizeRaster, TransparentPixelsLendNoColourToTheirNeighbours) {
    const Raster half =
        Painted(64, 8, [](uint32_t x, uint32_t) { return x < 32 ? 0xFF0000FFu : 0x00FF0000u; });
    for (const auto& size : {std::pair{16u, 8u}, {200u, 3u}, {63u, 8u}}) {
        const Raster out = slib::ResizeRaster(half, size.first, size.second);
        ASSERT_TRUE(out.hasAlpha);
        for (uint32_t x = 0; x < out.width; ++x) {
            const uint32_t pixel = PixelAt(out, x, 1);
            if ((pixel & 0xFF) != 0) {
                EXPECT_EQ(pixel >> 16 & 0xFF, 0u) << x;
                EXPECT_GE(pixel >> 24, 250u) << x;
            }
        }
        EXPECT_EQ(PixelAt(out, 0, 0), 0xFF0000FFu);
        EXPECT_EQ(PixelAt(out, out.width - 1, 0) & 0xFF, 0u);
    }
}

// Where a stored pixel shows once the picture is upright (stored size sw x sh).
std::pair<uint32_t, uint32_t> Displayed(uint16_t orientation, uint32_t x, uint32_t y, uint32_t sw,
                                        uint32_t sh) {
    const uint32_t mx = sw - 1 - x, my = sh - 1 - y, tx = sh - 1 - y, ty = sw - 1 - x;
    const std::pair<uint32_t, uint32_t> table[9] = {{x, y}, {x, y},  {mx, y},  {mx, my}, {x, my},
                                                    {y, x}, {tx, x}, {tx, ty}, {y, ty}};
    return table[orientation];
}

TEST(TurnRaster, EveryOrientationComesOutUpright) {
    // Upright, 3 x 2, each pixel names its own position.
    const auto label = [](uint32_t x, uint32_t y) { return (x << 24) | (y << 16) | 0x80FF; };
    for (uint16_t orientation = 0; orientation <= 9; ++orientation) {
        SCOPED_TRACE(orientation);
        const uint16_t o = orientation <= 8 ? orientation : 1;
        const bool sideways = o >= 5;
        const uint32_t sw = sideways ? 2 : 3, sh = sideways ? 3 : 2;
        const Raster stored = Painted(sw, sh, [&](uint32_t x, uint32_t y) {
            const auto [dx, dy] = Displayed(o, x, y, sw, sh);
            return label(dx, dy);
        });
        const Raster upright = slib::TurnRaster(stored, slib::UprightTurnFor(orientation));
        ASSERT_EQ(upright.width, 3u);
        ASSERT_EQ(upright.height, 2u);
        for (uint32_t y = 0; y < 2; ++y) {
            for (uint32_t x = 0; x < 3; ++x) {
                EXPECT_EQ(PixelAt(upright, x, y), label(x, y)) << x << "," << y;
            }
        }
    }
}

}  // namespace
