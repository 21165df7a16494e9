#include "picture/row_blocks.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>

#include "foundation/worker_threads.h"

namespace slib {
namespace {

// Starting a thread costs tens of microseconds; below this much work it does not pay.
constexpr uint64_t kWorkPerThread = uint64_t{1} << 22;
constexpr unsigned kMostThreads = 8;
constexpr uint32_t kRowsPerBlock = 16;

}  // namespace

void ForEachRowBlock(uint32_t rows, uint64_t work,
                     const std::function<void(uint32_t first, uint32_t end)>& body) {
    const uint32_t blocks = (rows + kRowsPerBlock - 1) / kRowsPerBlock;
    const uint64_t wanted = std::min<uint64_t>({work / kWorkPerThread,
                                                std::max(1u, std::thread::hardware_concurrency()),
                                                kMostThreads, blocks});
    std::atomic<uint32_t> next{0};
    const auto take = [&] {
        for (uint32_t block = next++; block < blocks; block = next++) {
            const uint32_t first = block * kRowsPerBlock;
            body(first, std::min(rows, first + kRowsPerBlock));
        }
    };
    if (wanted <= 1) {
        take();
        return;
    }
    // The calling thread takes blocks too; the helpers end when none are left. When the system
    // has no thread to spare, the helpers that did start finish and this thread does the rest.
    try {
        const WorkerThreads helpers(static_cast<unsigned>(wanted - 1), take, [] {});
        take();
    } catch (const std::system_error&) {
        take();
    }
}

}  // namespace slib
