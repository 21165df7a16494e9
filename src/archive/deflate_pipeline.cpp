#include "archive/deflate_pipeline.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>

#include "archive/joinable_deflate.h"

namespace archive {

namespace {

// One worker's deflate state, reset for every block.
class RawDeflater {
  public:
    explicit RawDeflater(int level) {
        ready_ =
            deflateInit2(&stream_, level, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) == Z_OK;
    }
    ~RawDeflater() {
        if (ready_) {
            deflateEnd(&stream_);
        }
    }
    RawDeflater(const RawDeflater&) = delete;
    RawDeflater& operator=(const RawDeflater&) = delete;

    bool run(DeflateBlock& block) {
        if (!ready_ || deflateReset(&stream_) != Z_OK) {
            return false;
        }
        // Room for the worst case up front, so one call normally does the whole block.
        const size_t bound = deflateBound(&stream_, static_cast<uLong>(block.inputLength)) + 64;
        if (block.output.size() < bound) {
            block.output.resize(bound);
        }
        stream_.next_in = block.input.data();
        stream_.avail_in = static_cast<uInt>(block.inputLength);
        size_t produced = 0;
        const int flush = block.last ? Z_FINISH : Z_SYNC_FLUSH;
        for (;;) {
            if (produced == block.output.size()) {
                block.output.resize(block.output.size() * 2);
            }
            stream_.next_out = block.output.data() + produced;
            stream_.avail_out = static_cast<uInt>(block.output.size() - produced);
            const int result = deflate(&stream_, flush);
            produced = block.output.size() - stream_.avail_out;
            if (result == Z_STREAM_END) {
                break;
            }
            if (result != Z_OK && result != Z_BUF_ERROR) {
                return false;
            }
            if (flush == Z_SYNC_FLUSH && stream_.avail_in == 0 && stream_.avail_out != 0) {
                break;
            }
        }
        block.outputLength = produced;
        return true;
    }

    // The size of `data` deflated on its own, finished (for a trial: the stream is reset).
    size_t trial(const uint8_t* data, size_t length, std::vector<uint8_t>& scratch) {
        if (!ready_ || deflateReset(&stream_) != Z_OK) {
            return length;
        }
        scratch.resize(deflateBound(&stream_, static_cast<uLong>(length)) + 64);
        stream_.next_in = const_cast<uint8_t*>(data);
        stream_.avail_in = static_cast<uInt>(length);
        stream_.next_out = scratch.data();
        stream_.avail_out = static_cast<uInt>(scratch.size());
        if (deflate(&stream_, Z_FINISH) != Z_STREAM_END) {
            return length;
        }
        return scratch.size() - stream_.avail_out;
    }

  private:
    z_stream stream_ = {};
    bool ready_ = false;
};

// Already-compressed content (photos, media, archives under other names) gains nothing from
// deflate, and deflate is at its slowest on it. Four samples deflated at the fastest level tell
// such a block apart; it is then written as stored blocks of the same deflate stream, which is
// what deflate itself would end up writing, at a fraction of the cost.
bool LooksIncompressible(RawDeflater& fastest, const DeflateBlock& block,
                         std::vector<uint8_t>& scratch) {
    constexpr size_t kSample = 4096;
    constexpr size_t kSamples = 4;
    if (block.inputLength < 16 * kSample) {
        return false;
    }
    for (size_t i = 0; i < kSamples; ++i) {
        const uint8_t* sample = block.input.data() + block.inputLength / kSamples * i;
        if (fastest.trial(sample, kSample, scratch) < kSample * 98 / 100) {
            return false;
        }
    }
    return true;
}

}  // namespace

DeflatePipeline::DeflatePipeline(unsigned workers, int level) {
    workers = std::max(1u, workers);
    const size_t blockCount = 2 * static_cast<size_t>(workers) + 2;
    for (size_t i = 0; i < blockCount; ++i) {
        blocks_.push_back(std::make_unique<DeflateBlock>());
        blocks_.back()->input.resize(kBlockSize);
        free_.push_back(blocks_.back().get());
    }
    threads_.emplace(
        workers, [this, level] { work(level); }, [this] { stop(); });
}

void DeflatePipeline::stop() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    workAvailable_.notify_all();
}

namespace {

size_t GrownBytes(size_t inputBytes) {
    return inputBytes > DeflatePipeline::kBlockSize ? 2 * inputBytes : 0;
}

}  // namespace

DeflateBlock* DeflatePipeline::acquire(size_t inputBytes) {
    const size_t grown = GrownBytes(inputBytes);
    if (free_.empty() ||
        (grown != 0 && grownBytes_ != 0 && grownBytes_ + grown > kMostGrownBytes)) {
        return nullptr;
    }
    DeflateBlock* block = free_.back();
    free_.pop_back();
    if (grown != 0) {
        block->input.resize(inputBytes);
        grownBytes_ += grown;
    }
    block->done.store(false);
    block->failed = false;
    return block;
}

void DeflatePipeline::submit(DeflateBlock* block) {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        queue_.push_back(block);
    }
    workAvailable_.notify_one();
}

void DeflatePipeline::waitFor(DeflateBlock* block) {
    std::unique_lock<std::mutex> lock(mutex_);
    blockDone_.wait(lock, [block] { return block->done.load(); });
}

void DeflatePipeline::release(DeflateBlock* block) {
    // A block grown for a whole entry or a part goes back to a block's size, its memory freed.
    if (const size_t grown = GrownBytes(block->input.size())) {
        grownBytes_ -= grown;
        block->input = std::vector<uint8_t>(kBlockSize);
        block->output = {};
    }
    free_.push_back(block);
}

void DeflatePipeline::work(int level) {
    JoinableDeflater deflater(level);
    RawDeflater storing(0);
    RawDeflater fastest(1);
    std::vector<uint8_t> scratch;
    for (;;) {
        DeflateBlock* block = nullptr;
        {
            std::unique_lock<std::mutex> lock(mutex_);
            workAvailable_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
            if (queue_.empty()) {
                return;
            }
            block = queue_.front();
            queue_.pop_front();
        }
        block->crc = libdeflate_crc32(0, block->input.data(), block->inputLength);
        bool ok = true;
        // Out of memory here fails the block, as a refusing codec does: the caller, waiting for
        // it, learns of it so and fails the call.
        try {
            if (block->deflate) {
                if (LooksIncompressible(fastest, *block, scratch)) {
                    ok = storing.run(*block);
                } else {
                    block->outputLength = deflater.deflate(block->input.data(), block->inputLength,
                                                           block->last, block->output);
                    ok = block->outputLength != 0;
                }
            }
        } catch (...) {
            ok = false;
        }
        {
            std::lock_guard<std::mutex> lock(mutex_);
            block->failed = !ok;
            block->done.store(true);
        }
        blockDone_.notify_all();
    }
}

}  // namespace archive
