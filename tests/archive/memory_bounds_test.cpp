// The two ceilings on what whole entries hold in memory: the deflate pipeline's grown blocks and
// the unpacking side's byte budget. Each must hold back what passes it, and never hold back the
// one entry that is alone.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>
#include <vector>

#include "archive/byte_budget.h"
#include "archive/deflate_pipeline.h"

namespace archive_test {
namespace {

using archive::ByteBudget;
using archive::DeflateBlock;
using archive::DeflatePipeline;

constexpr size_t kMiB = 1024 * 1024;

TEST(MemoryBounds, GrownBlocksStayWithinTheirAllowanceAndShrinkWhenReleased) {
    DeflatePipeline pipeline(1, 6);
    // Each counts twice (input and output): two fit in the allowance, a third does not.
    const size_t entry = DeflatePipeline::kMostGrownBytes / 5;
    DeflateBlock* first = pipeline.acquire(entry);
    DeflateBlock* second = pipeline.acquire(entry);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->input.size(), entry);
    EXPECT_EQ(pipeline.acquire(entry), nullptr);
    DeflateBlock* plain = pipeline.acquire();  // blocks of the usual size are not held back
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(plain->input.size(), DeflatePipeline::kBlockSize);

    pipeline.release(first);
    EXPECT_EQ(first->input.size(), DeflatePipeline::kBlockSize);
    DeflateBlock* third = pipeline.acquire(entry);
    ASSERT_NE(third, nullptr);
    pipeline.release(second);
    pipeline.release(third);
    // Alone, even an entry past the whole allowance gets its block.
    DeflateBlock* huge = pipeline.acquire(DeflatePipeline::kMostGrownBytes);
    ASSERT_NE(huge, nullptr);
    EXPECT_EQ(pipeline.acquire(2 * DeflatePipeline::kBlockSize), nullptr);
    pipeline.release(huge);
    pipeline.release(plain);
}

TEST(MemoryBounds, BudgetHoldsAClaimBackUntilBytesAreGivenBack) {
    ByteBudget budget(10 * kMiB);
    std::optional<ByteBudget::Claim> held(budget.claim(6 * kMiB));
    std::atomic<bool> granted{false};
    std::thread claimant([&] {
        ByteBudget::Claim claim = budget.claim(6 * kMiB);
        granted = static_cast<bool>(claim);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_FALSE(granted.load()) << "a claim past the budget went through";
    held.reset();
    claimant.join();
    EXPECT_TRUE(granted.load());

    // Alone, a claim past the whole budget goes through; moved, it gives back only once.
    ByteBudget::Claim big = budget.claim(20 * kMiB);
    ASSERT_TRUE(big);
    ByteBudget::Claim moved = std::move(big);
    big = ByteBudget::Claim();
    ByteBudget::Claim small = ByteBudget::Claim();
    std::thread waiter([&] { small = budget.claim(kMiB); });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    moved = ByteBudget::Claim();
    waiter.join();
    EXPECT_TRUE(small);
}

TEST(MemoryBounds, ClosingTheBudgetWakesAWaitingClaimEmptyHanded) {
    ByteBudget budget(kMiB);
    ByteBudget::Claim held = budget.claim(kMiB);
    std::atomic<int> outcome{-1};
    std::thread claimant([&] { outcome = budget.claim(kMiB) ? 1 : 0; });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    budget.close();
    claimant.join();
    EXPECT_EQ(outcome.load(), 0);
}

}  // namespace
}  // namespace archive_test
