// The portable rules of a conversion: the target size and the palette of indexed formats.
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "picture/palette_quantizer.h"
#include "picture/target_size.h"

namespace {

TEST(TargetSize, FollowsTheSidesAndTheBoxRoundedToWholePixels) {
    const double kNaN = std::numeric_limits<double>::quiet_NaN();
    const struct {
        double w, h;
        slib::SizeRequest request;
        const char* expected;
    } cases[] = {
        {400, 300, {100.0, std::nullopt, true}, "100x75"},
        {400, 300, {100.0, 100.0, true}, "100x75"},  // the smaller factor keeps the box
        {400, 300, {100.0, 100.0, false}, "100x100"},
        {400, 300, {1000.0, 150.0, true}, "200x150"},
        {400, 300, {std::nullopt, 60.0, false}, "400x60"},
        {400, 300, {std::nullopt, std::nullopt, true}, "400x300"},
        {400, 300, {133.5, 99.4, false}, "134x99"},
        {400, 300, {0.0, -5.0, false}, "1x1"},             // never below one pixel
        {3, 1000, {std::nullopt, 10.0, true}, "1x10"},     // 0.03 wide
        {0, 300, {100.0, std::nullopt, true}, "100x300"},  // a zero side scales by 1
        {400, 300, {kNaN, 1e12, false}, "1x2147483647"},
    };
    for (const auto& c : cases) {
        const slib::PixelSize size = slib::ComputeTargetSize(c.w, c.h, c.request);
        EXPECT_EQ(std::to_string(size.width) + "x" + std::to_string(size.height), c.expected)
            << c.w << "x" << c.h << " asked " << c.request.width.value_or(-1) << ","
            << c.request.height.value_or(-1) << (c.request.proportional ? " proportional" : "");
    }
}

TEST(PaletteQuantizer, KeepsFewColoursExactlyAndMapsManyToTheNearestCubeColour) {
    // Two rows of three pixels, each row padded by one.
    const uint32_t few[] = {0xFFFF0000, 0xFF00FF00, 0xFFFF0000, 0xDEADBEEF,
                            0x800000FF, 0xFF00FF00, 0xFF123456, 0xDEADBEEF};
    const slib::IndexedPixels exact =
        slib::QuantizeToPalette(reinterpret_cast<const uint8_t*>(few), 3, 2, 16);
    std::vector<uint32_t> back;
    for (const uint8_t index : exact.indices) {
        back.push_back(exact.palette.at(index));
    }
    EXPECT_EQ(back, (std::vector<uint32_t>{0xFFFF0000, 0xFF00FF00, 0xFFFF0000, 0x800000FF,
                                           0xFF00FF00, 0xFF123456}));
    EXPECT_EQ(exact.palette.size(), 4u);

    std::vector<uint32_t> many(300);
    for (uint32_t i = 0; i < many.size(); ++i) {
        many[i] = 0xFF000000u | (i * 0x010203u);
    }
    const slib::IndexedPixels cube = slib::QuantizeToPalette(
        reinterpret_cast<const uint8_t*>(many.data()), many.size(), 1, many.size() * 4);
    EXPECT_LE(cube.palette.size(), 256u);
    for (size_t i = 0; i < many.size(); ++i) {
        const uint32_t got = cube.palette.at(cube.indices[i]);
        for (int shift = 0; shift <= 16; shift += 8) {
            ASSERT_LE(std::abs(int((got >> shift) & 0xFF) - int((many[i] >> shift) & 0xFF)), 26)
                << i;  // within half a step of the cube
        }
    }
}

}  // namespace
