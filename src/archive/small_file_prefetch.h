#pragma once
// Small files to be packed are read whole on a few threads, ahead of the archive writer and in
// its order. Opening, reading and closing a small file costs mostly waits on the system (under
// Wine, round trips to the server process); with thousands of them those waits, not deflate,
// would set the pace, and several files read at once overlap them. The read-ahead is bounded
// in files and bytes, and its results have room kept for them from the start: a reading thread
// hands over every outcome, a failure included, without allocating anything.

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "archive/archive_io.h"
#include "archive/entry_time.h"
#include "foundation/worker_threads.h"

namespace archive {

struct PrefetchedFile {
    std::vector<uint8_t> bytes;
    EntryTime time;
};

class SmallFilePrefetch {
  public:
    static constexpr uint64_t kLargestFile = 256 * 1024;  // as listed by the walk
    static constexpr unsigned kThreads = 3;
    static constexpr size_t kMostFilesAhead = 256;
    static constexpr size_t kMostBytesAhead = 8 * 1024 * 1024;

    // `paths` are absolute; the files whose `wanted` flag is set are read ahead.
    SmallFilePrefetch(std::vector<std::u16string> paths, std::vector<bool> wanted);
    SmallFilePrefetch(const SmallFilePrefetch&) = delete;
    SmallFilePrefetch& operator=(const SmallFilePrefetch&) = delete;

    // File `index` (asked for in increasing order): its content, or nothing when it is not read
    // ahead (not wanted, or grown past kLargestFile since the walk). Reading it failed: throws
    // what opening or reading it as OpenSourceFile throws.
    std::optional<PrefetchedFile> take(size_t index);

  private:
    struct Result {
        std::optional<PrefetchedFile> file;
        std::exception_ptr failure;
    };

    void work();
    Result read(size_t index) const noexcept;
    void stop();
    // Where the result of file `index` waits: one slot for each file that may be read ahead.
    size_t slotOf(size_t index) const { return index % kMostFilesAhead; }

    std::vector<std::u16string> paths_;
    std::vector<bool> wanted_;
    std::mutex mutex_;
    std::condition_variable resultReady_;
    std::condition_variable roomMade_;
    size_t nextToRead_ = 0;
    size_t nextToTake_ = 0;
    size_t bytesAhead_ = 0;
    std::vector<Result> results_;  // by slot
    std::vector<bool> filled_;     // by slot: its result is there
    bool takerWaits_ = false;
    size_t readersWaiting_ = 0;
    bool stopping_ = false;
    slib::WorkerThreads threads_;  // last: the threads end before the state they use
};

}  // namespace archive
