#pragma once
// Deflates entries on worker threads while the caller reads ahead and writes finished blocks out
// in order. An entry up to kWholeEntryLimit is read into one block of its own size and deflated
// whole by libdeflate, on whichever worker is free; a larger one is cut into parts of kPartSize,
// deflated alike on all the workers at once, whose streams join into the entry's one stream
// (joinable_deflate.h). The workers touch only memory and the codecs.
//
// A fixed set of blocks is reused for the whole archive, and the blocks grown past kBlockSize for
// whole entries and parts hold at most kMostGrownBytes between them: memory stays bounded whatever
// the size of the files, and the caller waits for the oldest block when no block can be had.

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "foundation/worker_threads.h"

namespace archive {

struct DeflateBlock {
    // Buffers keep their size for the whole archive (no clearing per block); the lengths say how
    // much of them is in use.
    std::vector<uint8_t> input;
    size_t inputLength = 0;
    bool deflate = true;  // false: stored as it is, only the CRC is computed
    bool last = false;    // finishes the entry's deflate stream

    // Filled in by the worker.
    std::vector<uint8_t> output;
    size_t outputLength = 0;
    uint32_t crc = 0;
    bool failed = false;  // the codec refused, or there was no memory for it
    std::atomic<bool> done{false};

    const uint8_t* data() const { return deflate ? output.data() : input.data(); }
    size_t dataLength() const { return deflate ? outputLength : inputLength; }
};

class DeflatePipeline {
  public:
    static constexpr size_t kBlockSize = 512 * 1024;
    static constexpr size_t kPartSize = 4 * 1024 * 1024;
    static constexpr size_t kWholeEntryLimit = 8 * 1024 * 1024;
    // Input and output of the blocks grown past kBlockSize out at once.
    static constexpr size_t kMostGrownBytes = 32 * 1024 * 1024;

    // `workers` threads (at least one), each with its own deflate state at `level`.
    DeflatePipeline(unsigned workers, int level);
    DeflatePipeline(const DeflatePipeline&) = delete;
    DeflatePipeline& operator=(const DeflatePipeline&) = delete;

    // A block whose input has room for `inputBytes` (at least a block's worth), or null when
    // every block is in flight or the grown ones would pass their allowance (wait for the oldest,
    // release it). A grown block alone is always granted.
    DeflateBlock* acquire(size_t inputBytes = kBlockSize);
    void submit(DeflateBlock* block);
    void waitFor(DeflateBlock* block);
    void release(DeflateBlock* block);

  private:
    void work(int level);
    void stop();

    std::vector<std::unique_ptr<DeflateBlock>> blocks_;
    std::vector<DeflateBlock*> free_;
    size_t grownBytes_ = 0;  // input and output of the blocks out grown past kBlockSize
    std::mutex mutex_;
    std::condition_variable workAvailable_;
    std::condition_variable blockDone_;
    std::deque<DeflateBlock*> queue_;
    bool stopping_ = false;
    std::optional<slib::WorkerThreads> threads_;  // last: the threads end before the blocks
};

}  // namespace archive
