// The scope that keeps the system's error boxes away: held where it is made, given back after,
// and held by every worker thread.
#include <gtest/gtest.h>

#include <atomic>

#include "foundation/error_boxes.h"
#include "foundation/worker_threads.h"

namespace {

TEST(NoErrorBoxes, HoldsForItsScopeOnlyAndNests) {
    ASSERT_FALSE(slib::ErrorBoxesAreOff());
    {
        const slib::NoErrorBoxes outer;
        EXPECT_TRUE(slib::ErrorBoxesAreOff());
        {
            const slib::NoErrorBoxes inner;
            EXPECT_TRUE(slib::ErrorBoxesAreOff());
        }
        EXPECT_TRUE(slib::ErrorBoxesAreOff());
    }
    EXPECT_FALSE(slib::ErrorBoxesAreOff());
}

TEST(NoErrorBoxes, EveryWorkerThreadRunsWithout) {
    std::atomic<int> ran{0};
    std::atomic<int> withBoxes{0};
    {
        slib::WorkerThreads threads(
            4,
            [&] {
                ++ran;
                if (!slib::ErrorBoxesAreOff()) {
                    ++withBoxes;
                }
            },
            [] {});
    }
    EXPECT_EQ(ran.load(), 4);
    EXPECT_EQ(withBoxes.load(), 0);
    EXPECT_FALSE(slib::ErrorBoxesAreOff());
}

}  // namespace
