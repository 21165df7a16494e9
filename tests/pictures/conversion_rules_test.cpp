// The portable rules of a conversion that VFile_Convert's own tests do not reach: rounding and
// extreme target sizes, and the fixed palette for GIFs of many colours.
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "picture/palette_quantizer.h"
#include "picture/target_size.h"

namespace {

TEST(TargetSize, RoundsToWholePixelsNeverBelowOne) {
    const struct {
        double w, h;
        slib::SizeRequest request;
        const char* expected;
    } cases[] = {
        {400, 300, {1000.0, 150.0, true}, "200x150"},
        {400, 300, {133.5, 99.4, false}, "134x99"},
        {400, 300, {0.0, -5.0, false}, "1x1"},
        {3, 1000, {std::nullopt, 10.0, true}, "1x10"},     // 0.03 wide
        {0, 300, {100.0, std::nullopt, true}, "100x300"},  // a zero side scales by 1
        {400, 300, {std::numeric_limits<double>::quiet_NaN(), 1e12, false}, "1x2147483647"},
    };
    for (const auto& c : cases) {
        const slib::PixelSize size = slib::ComputeTargetSize(c.w, c.h, c.request);
        EXPECT_EQ(std::to_string(size.width) + "x" + std::to_string(size.height), c.expected);
    }
}

TEST(PaletteQuantizer, MapsManyColoursToTheNearestOfAtMost256) {
    std::vector<uint32_t> pixels(300);
    for (uint32_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = 0xFF000000u | (i * 0x010203u);
    }
    const slib::IndexedPixels cube = slib::QuantizeToPalette(
        reinterpret_cast<const uint8_t*>(pixels.data()), pixels.size(), 1, pixels.size() * 4);
    EXPECT_LE(cube.palette.size(), 256u);
    for (size_t i = 0; i < pixels.size(); ++i) {
        const uint32_t got = cube.palette.at(cube.indices[i]);
        for (int shift = 0; shift <= 16; shift += 8) {
            ASSERT_LE(std::abs(int((got >> shift) & 0xFF) - int((pixels[i] >> shift) & 0xFF)), 26)
                << i;  // within half a step of the colour cube
        }
    }
}

}  // namespace
