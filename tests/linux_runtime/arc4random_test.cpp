#include <gtest/gtest.h>

#include <cstdint>
#include <set>

extern "C" std::uint32_t arc4random() noexcept;

namespace {

// std::random_device relies on it: a stand-in that fills one byte, or none, would go unnoticed.
TEST(RuntimeArc4random, DrawsDifferAndSetEveryBit) {
    std::set<std::uint32_t> draws;
    std::uint32_t bitsSeen = 0;
    for (int i = 0; i < 64; ++i) {
        const std::uint32_t draw = arc4random();
        draws.insert(draw);
        bitsSeen |= draw;
    }
    EXPECT_GE(draws.size(), 60u);
    EXPECT_EQ(bitsSeen, 0xFFFFFFFFu);
}

}  // namespace
