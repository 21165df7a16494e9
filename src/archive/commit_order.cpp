#include "archive/commit_order.h"

#include <utility>

namespace archive {

void CommitOrder::ready(uint64_t sequence, std::unique_ptr<EntryFile> file, const EntryTime& time,
                        std::exception_ptr failure) noexcept {
    std::unique_lock<std::mutex> lock(mutex_);
    if (failure_) {
        lock.unlock();
        file.reset();
        return;
    }
    try {
        waiting_.emplace(sequence, Waiting{std::move(file), time, std::move(failure)});
    } catch (...) {
        failure_ = std::current_exception();
    }
    if (committing_) {
        return;  // that thread takes this file too when its turn comes
    }
    committing_ = true;
    while (!failure_ && !waiting_.empty() && waiting_.begin()->first == next_) {
        Waiting turn = std::move(waiting_.begin()->second);
        waiting_.erase(waiting_.begin());
        lock.unlock();
        std::exception_ptr failed = turn.failure;
        if (!failed) {
            try {
                turn.file->commit(turn.time);
            } catch (...) {
                failed = std::current_exception();
            }
        }
        turn.file.reset();
        lock.lock();
        if (failed) {
            failure_ = failed;
        } else {
            ++next_;
        }
    }
    // Files after a failure are removed (destroyed uncommitted) once the lock is released.
    std::map<uint64_t, Waiting> dropped;
    if (failure_) {
        dropped.swap(waiting_);
    }
    committing_ = false;
    lock.unlock();
}

std::exception_ptr CommitOrder::failure() {
    std::lock_guard<std::mutex> lock(mutex_);
    return failure_;
}

}  // namespace archive
