#pragma once
// Unpacking on two threads. A worker reads, inflates and verifies entries ahead of time while the
// calling thread creates their files and writes them out: with thousands of small files the file
// system, not inflate, sets the pace, and the two now overlap. Only the calling thread touches the
// target, in archive order. A file is committed only after the worker verified its entry, and a
// failure surfaces once every entry before it is in place, as when unpacking on one thread.
//
// The worker runs at most a bounded amount ahead (bytes and steps), so memory stays bounded
// whatever the archive holds.

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <mutex>
#include <vector>

#include "archive/entry_time.h"
#include "archive/extract_target.h"

namespace archive {

// One thing for the calling thread to do, in archive order.
struct ExtractStep {
    enum class Kind { kFolder, kFile, kData, kCommit, kFailed, kFinished };
    Kind kind = Kind::kFinished;
    RelativePath path;           // kFolder, kFile
    std::vector<uint8_t> data;   // kData
    EntryTime time;              // kCommit
    std::exception_ptr failure;  // kFailed
};

// The bounded hand-over between the worker and the calling thread. Steps change hands in batches
// and a side is woken only when it waits: under Wine every wait and wake is a round trip to the
// server, too dear to pay per step.
class ExtractStepQueue {
  public:
    static constexpr size_t kMostBytesAhead = 8 * 1024 * 1024;
    static constexpr size_t kMostStepsAhead = 4096;

    // Waits while the queue is full. False once the calling thread has stopped taking steps.
    bool push(ExtractStep step);
    // Waits for steps, then moves every step queued so far into `batch` (which must be empty).
    void takeAll(std::deque<ExtractStep>& batch);
    // The calling thread takes no more steps; a waiting push returns false.
    void close();

    // Data buffers go round between the threads instead of being allocated per chunk.
    std::vector<uint8_t> spareBuffer();
    void recycle(std::vector<uint8_t> buffer);

  private:
    std::mutex mutex_;
    std::condition_variable stepsQueued_;
    std::condition_variable roomMade_;
    std::deque<ExtractStep> steps_;
    size_t bytes_ = 0;
    bool closed_ = false;
    bool taking_ = false;   // the calling thread waits for steps
    bool pushing_ = false;  // the worker waits for room
    std::vector<std::vector<uint8_t>> spare_;
};

}  // namespace archive
