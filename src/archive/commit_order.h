#pragma once
// Files of an archive are written on several threads but put in place strictly in archive order,
// so a failure leaves exactly what unpacking on one thread would: every file before the failing
// one committed, nothing after it. A file written early waits, open, until the files before it
// are in place; no thread waits for it.

#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <mutex>

#include "archive/entry_time.h"
#include "archive/extract_target.h"

namespace archive {

class CommitOrder {
  public:
    // The file of `sequence` is written (or failed with `failure`). It is committed as soon as
    // every file before it is, possibly right away on this thread together with the files after
    // it that are waiting. If it or a file before it failed, it is dropped (which removes it).
    // Every sequence from 0 up must be reported exactly once. Never throws: called last on the
    // writer threads, whose failures must reach the call. Should there be no memory to keep the
    // file waiting, that failure stops the unpacking at once.
    void ready(uint64_t sequence, std::unique_ptr<EntryFile> file, const EntryTime& time,
               std::exception_ptr failure) noexcept;

    // The first failure in archive order, or null.
    std::exception_ptr failure();

  private:
    struct Waiting {
        std::unique_ptr<EntryFile> file;
        EntryTime time;
        std::exception_ptr failure;
    };

    std::mutex mutex_;
    uint64_t next_ = 0;
    bool committing_ = false;  // a thread is committing the waiting files in order
    std::map<uint64_t, Waiting> waiting_;
    std::exception_ptr failure_;
};

}  // namespace archive
