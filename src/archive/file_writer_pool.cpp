#include "archive/file_writer_pool.h"

#include <memory>
#include <utility>

#include "archive/memory_io.h"

namespace archive {

FileWriterPool::FileWriterPool(ByteSource& archive, ExtractTarget& target, CommitOrder& order,
                               std::function<void(std::vector<uint8_t>)> recycle)
    : archive_(archive),
      target_(target),
      order_(order),
      recycle_(std::move(recycle)),
      threads_(
          kThreads, [this] { work(); }, [this] { stop(); }) {}

void FileWriterPool::stop() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    jobQueued_.notify_all();
}

void FileWriterPool::submit(std::vector<FileJob>& jobs) {
    bool wake = false;
    {
        std::unique_lock<std::mutex> lock(mutex_);
        // A batch larger than the whole allowance still goes in once the queue is empty.
        const auto room = [&] {
            return queue_.empty() || queue_.size() + jobs.size() <= kMostQueued;
        };
        if (!room()) {
            submitterWaits_ = true;
            jobTaken_.wait(lock, room);
            submitterWaits_ = false;
        }
        for (FileJob& job : jobs) {
            queue_.push_back(std::move(job));
        }
        wake = idleThreads_ > 0;
    }
    jobs.clear();
    if (wake) {
        jobQueued_.notify_all();
    }
}

void FileWriterPool::drain() {
    std::unique_lock<std::mutex> lock(mutex_);
    drainerWaits_ = true;
    jobDone_.wait(lock, [this] { return queue_.empty() && running_ == 0; });
    drainerWaits_ = false;
}

// Wakes are sent only to a side that waits: under Wine each one is a round trip to the server.
void FileWriterPool::work() {
    EntryDecoder decoder;
    for (;;) {
        FileJob job;
        bool wakeSubmitter = false;
        {
            std::unique_lock<std::mutex> lock(mutex_);
            if (queue_.empty() && !stopping_) {
                ++idleThreads_;
                jobQueued_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
                --idleThreads_;
            }
            if (queue_.empty()) {
                return;
            }
            job = std::move(queue_.front());
            queue_.pop_front();
            ++running_;
            wakeSubmitter = submitterWaits_;
        }
        if (wakeSubmitter) {
            jobTaken_.notify_one();
        }
        write(job, decoder);
        bool wakeDrainer = false;
        {
            std::lock_guard<std::mutex> lock(mutex_);
            --running_;
            wakeDrainer = drainerWaits_ && running_ == 0 && queue_.empty();
        }
        if (wakeDrainer) {
            jobDone_.notify_all();
        }
    }
}

void FileWriterPool::write(FileJob& job, EntryDecoder& decoder) noexcept {
    if (order_.failure()) {
        return;  // an earlier file failed: this one would only be removed again
    }
    std::unique_ptr<EntryFile> file;
    std::exception_ptr failure;
    try {
        file = target_.createFile(job.path);
        if (job.whole) {
            MemorySource encoded(job.encoded);
            decoder.decode(job.entry, encoded, 0, *file);
            recycle_(std::move(job.encoded));
        } else {
            decoder.decode(job.entry, archive_, job.dataStart, *file);
        }
    } catch (...) {
        failure = std::current_exception();
    }
    order_.ready(job.sequence, std::move(file), job.entry.time, failure);
}

}  // namespace archive
