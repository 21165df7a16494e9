// Running out of memory on a worker thread of packing or unpacking, at every allocation in turn:
// the call ends with an error or with everything right, never with the process ended or a file
// quietly missing, and the next call works. Every allocation made off the test's own thread is
// counted by the operator new of this program, and the chosen one fails.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <thread>

#include "archive/memory_io.h"
#include "archive/zip_writer.h"
#include "archive_test_support.h"
#include "foundation/exception.h"

namespace {

std::atomic<int64_t> countdown{0};  // armed while above 0: the allocation that takes it to 0 fails
std::atomic<int64_t> counted{0};
std::atomic<bool> injected{false};
std::thread::id armedOn;  // the test's thread, whose allocations never fail

void* Allocate(std::size_t size) {
    if (countdown.load(std::memory_order_relaxed) > 0 && std::this_thread::get_id() != armedOn) {
        counted.fetch_add(1, std::memory_order_relaxed);
        if (countdown.fetch_sub(1) == 1) {
            injected = true;
            throw std::bad_alloc();
        }
    }
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace archive_test {
namespace {

// The allocations off this thread while `work` runs, the `failing`th of them failing (0: none).
template <typename Work>
int64_t CountWorkerAllocations(int64_t failing, Work&& work) {
    armedOn = std::this_thread::get_id();
    counted = 0;
    injected = false;
    countdown = failing > 0 ? failing : int64_t{1} << 40;
    work();
    countdown = 0;
    return counted;
}

// Whole entries and one the writer threads stream (over kWholeEntryLimit decoded), in folders.
std::vector<Item> Items() {
    std::vector<Item> items = {{u"docs", "", true}, {u"docs/deep", "", true}};
    for (int i = 0; i < 12; ++i) {
        items.push_back(
            {u"docs/" + std::u16string(1, char16_t(u'a' + i)) + u".txt", Text(3000 + 700 * i, i)});
    }
    items.push_back({u"docs/deep/streamed.txt", Text(9 * 1024 * 1024, 77)});
    items.push_back({u"noise.bin", Noise(600 * 1024, 5)});
    return items;
}

// Tries failing allocation 1, 2, ... up to `total`, about `runs` of them spread evenly.
std::vector<int64_t> Picks(int64_t total, int64_t runs) {
    std::vector<int64_t> picks;
    const int64_t step = std::max<int64_t>(1, total / runs);
    for (int64_t pick = 1; pick <= total; pick += step) {
        picks.push_back(pick);
    }
    return picks;
}

TEST(WorkerAllocation, FailingOnAnyUnpackingThreadFailsTheCallOrLosesNothing) {
    const std::vector<uint8_t> archive = Build(Items());
    Outcome reference;
    const int64_t total = CountWorkerAllocations(0, [&] { reference = Extract(archive); });
    ASSERT_EQ(reference.failure, "");
    ASSERT_GT(total, 10);
    int failed = 0;
    for (const int64_t pick : Picks(total, 400)) {
        SCOPED_TRACE("allocation " + std::to_string(pick) + " of " + std::to_string(total));
        Outcome outcome;
        bool outOfMemory = false;
        CountWorkerAllocations(pick, [&] {
            try {
                outcome = Extract(archive);
            } catch (const std::bad_alloc&) {
                outOfMemory = true;
            }
        });
        if (outOfMemory || !outcome.failure.empty()) {
            ++failed;
        } else {
            // Absorbed on the way (a spare buffer not kept, say): then nothing may be missing.
            EXPECT_EQ(outcome.tree, reference.tree) << (injected ? "injected" : "not reached");
        }
    }
    EXPECT_GT(failed, 0) << "no injected failure reached the call";
    EXPECT_EQ(Extract(archive).tree, reference.tree) << "the next call";
}

TEST(WorkerAllocation, FailingOnAnyPackingThreadFailsTheCallOrLosesNothing) {
    const std::vector<Item> items = Items();
    std::vector<uint8_t> reference;
    const int64_t total = CountWorkerAllocations(0, [&] { reference = Build(items); });
    ASSERT_GT(total, 0);
    int failed = 0;
    for (const int64_t pick : Picks(total, 200)) {
        SCOPED_TRACE("allocation " + std::to_string(pick) + " of " + std::to_string(total));
        std::vector<uint8_t> archive;
        bool threw = false;
        CountWorkerAllocations(pick, [&] {
            try {
                archive = Build(items);
            } catch (const slib::Exception& failure) {
                EXPECT_EQ(failure.error()->code(), -43) << failure.what();
                threw = true;
            }
        });
        if (threw) {
            ++failed;
        } else {
            EXPECT_EQ(Extract(archive).tree, Extract(reference).tree);
        }
    }
    EXPECT_GT(failed, 0) << "no injected failure reached the call";
    EXPECT_EQ(Extract(Build(items)).tree, Extract(reference).tree) << "the next call";
}

}  // namespace
}  // namespace archive_test
