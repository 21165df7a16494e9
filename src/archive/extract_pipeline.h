#pragma once
// Unpacking on several threads. A worker reads the archive's directory and headers ahead of time
// and checks every entry; the files go to a pool of writer threads that decode, verify and write
// several at once (file_writer_pool.h). A small entry's bytes travel with it, read by the worker;
// a large one the writer thread streams from the archive itself, so several large files inflate
// at once too. Files and folders are put in place strictly in archive order, each file only once
// its entry is verified, so a failure leaves what unpacking on one thread would: the files before
// it, nothing after it.
//
// The worker runs at most a bounded number of steps ahead, and the whole entries read, queued,
// being decoded or written hold at most a bounded number of bytes between them (ByteBudget), so
// memory stays bounded whatever the archive holds.

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <mutex>
#include <vector>

#include "archive/byte_budget.h"
#include "archive/entry_time.h"
#include "archive/extract_target.h"
#include "archive/zip_reader.h"

namespace archive {

// One thing for the calling thread to do, in archive order.
struct ExtractStep {
    enum class Kind { kFolder, kFile, kFinished };
    Kind kind = Kind::kFinished;
    RelativePath path;           // kFolder, kFile
    ArchiveEntry entry;          // kFile
    uint64_t dataStart = 0;      // kFile: where its stored or deflated bytes begin
    bool whole = false;          // kFile: `data` holds those bytes (else read from the archive)
    std::vector<uint8_t> data;   // kFile, whole
    ByteBudget::Claim claim;     // kFile, whole: its share of the budget, until it is written
    std::exception_ptr failure;  // kFinished: an entry left out, reported at the end
};

// The bounded hand-over between the worker and the calling thread. Steps change hands in batches
// and a side is woken only when it waits: under Wine every wait and wake is a round trip to the
// server, too dear to pay per step.
class ExtractStepQueue {
  public:
    static constexpr size_t kMostStepsAhead = 4096;
    // Whole entries: encoded plus decoded bytes, from reading to written.
    static constexpr size_t kMostWholeEntryBytes = 32 * 1024 * 1024;

    // Waits while the queue is full. False once the calling thread has stopped taking steps.
    bool push(ExtractStep step);
    // Waits for steps, then moves every step queued so far into `batch` (which must be empty).
    // Once they are all taken, throws the worker's failure, if it had one.
    void takeAll(std::deque<ExtractStep>& batch);
    // The worker's end by a failure, after the steps it queued; never throws.
    void fail(std::exception_ptr failure) noexcept;
    // The calling thread takes no more steps; a waiting push or claim returns nothing.
    void close();
    // Waits until a whole entry of `bytes` (encoded and decoded) fits; empty once closed.
    ByteBudget::Claim claimWholeEntry(size_t bytes) { return wholeEntries_.claim(bytes); }

    // Data buffers go round between the threads instead of being allocated per chunk.
    std::vector<uint8_t> spareBuffer();
    void recycle(std::vector<uint8_t> buffer);

  private:
    ByteBudget wholeEntries_{kMostWholeEntryBytes};  // first: outlives the claims of queued steps
    std::mutex mutex_;
    std::condition_variable stepsQueued_;
    std::condition_variable roomMade_;
    std::deque<ExtractStep> steps_;
    std::exception_ptr failure_;
    bool closed_ = false;
    bool taking_ = false;   // the calling thread waits for steps
    bool pushing_ = false;  // the worker waits for room
    std::vector<std::vector<uint8_t>> spare_;
};

}  // namespace archive
