#pragma once
// Files are created, decoded, verified, written and committed on a few threads at once. Inflate
// then runs on more than one core, and the waits of each new file on the file system (under Wine,
// round trips to the server process) overlap. Commits still follow archive order (CommitOrder).
// A job's every failure, out of memory included, goes to the CommitOrder and so to the call:
// nothing escapes a thread. The pool holds at most kMostQueued jobs (or one batch) waiting; the
// bytes of a whole entry count against the whole entries' byte budget, whose claim the job carries
// until it is written. More threads than cores: a thread waiting on the file system leaves its core
// to another.

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

#include "archive/byte_budget.h"
#include "archive/commit_order.h"
#include "archive/entry_time.h"
#include "archive/extract_target.h"
#include "archive/zip_reader.h"
#include "foundation/worker_threads.h"

namespace archive {

// One file: its entry, and the entry's bytes as the archive stores them when they came whole.
struct FileJob {
    uint64_t sequence = 0;
    RelativePath path;
    ArchiveEntry entry;
    uint64_t dataStart = 0;  // in the archive
    bool whole = false;      // else streamed from the archive while it is decoded
    std::vector<uint8_t> encoded;
    ByteBudget::Claim claim;  // given back once the file is written
};

class FileWriterPool {
  public:
    static constexpr unsigned kThreads = 4;
    static constexpr size_t kMostQueued = 256;

    // `recycle` takes back each job's bytes once decoded (called on the pool's threads).
    // `archive` is read from the pool's threads at once (its reads must allow that).
    FileWriterPool(ByteSource& archive, ExtractTarget& target, CommitOrder& order,
                   std::function<void(std::vector<uint8_t>)> recycle);
    // Destroying the pool finishes the queued jobs first.
    FileWriterPool(const FileWriterPool&) = delete;
    FileWriterPool& operator=(const FileWriterPool&) = delete;

    // Hands over every job of `jobs` (emptied) at once, waiting while the queue is full.
    void submit(std::vector<FileJob>& jobs);
    // Waits until every submitted job is done (committed, failed or abandoned).
    void drain();

  private:
    void work();
    void write(FileJob& job, EntryDecoder& decoder) noexcept;
    void stop();

    ByteSource& archive_;
    ExtractTarget& target_;
    CommitOrder& order_;
    std::function<void(std::vector<uint8_t>)> recycle_;
    std::mutex mutex_;
    std::condition_variable jobQueued_;
    std::condition_variable jobTaken_;
    std::condition_variable jobDone_;
    std::deque<FileJob> queue_;
    size_t running_ = 0;
    size_t idleThreads_ = 0;
    bool submitterWaits_ = false;
    bool drainerWaits_ = false;
    bool stopping_ = false;
    slib::WorkerThreads threads_;  // last: the threads end before the state they use
};

}  // namespace archive
