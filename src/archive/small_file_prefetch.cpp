#include "archive/small_file_prefetch.h"

#include <algorithm>
#include <utility>

#include "archive/disk_files.h"

namespace archive {

SmallFilePrefetch::SmallFilePrefetch(std::vector<std::u16string> paths, std::vector<bool> wanted)
    : paths_(std::move(paths)),
      wanted_(std::move(wanted)),
      results_(kMostFilesAhead),
      filled_(kMostFilesAhead, false),
      threads_(
          kThreads, [this] { work(); }, [this] { stop(); }) {}

void SmallFilePrefetch::stop() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    roomMade_.notify_all();
}

// Wakes go only to a side that waits: under Wine each one is a round trip to the server.
std::optional<PrefetchedFile> SmallFilePrefetch::take(size_t index) {
    Result result;
    bool wakeReaders = false;
    {
        std::unique_lock<std::mutex> lock(mutex_);
        if (wanted_[index]) {
            const size_t slot = slotOf(index);
            if (!filled_[slot]) {
                takerWaits_ = true;
                resultReady_.wait(lock, [&] { return filled_[slot]; });
                takerWaits_ = false;
            }
            result = std::move(results_[slot]);
            results_[slot] = Result();
            filled_[slot] = false;
            if (result.file) {
                bytesAhead_ -= result.file->bytes.size();
            }
        }
        nextToTake_ = index + 1;
        wakeReaders = readersWaiting_ > 0;
    }
    if (wakeReaders) {
        roomMade_.notify_all();
    }
    if (result.failure) {
        std::rethrow_exception(result.failure);
    }
    return std::move(result.file);
}

void SmallFilePrefetch::work() {
    for (;;) {
        size_t index = 0;
        {
            std::unique_lock<std::mutex> lock(mutex_);
            for (;;) {
                while (nextToRead_ < paths_.size() && !wanted_[nextToRead_]) {
                    ++nextToRead_;
                }
                if (stopping_ || nextToRead_ >= paths_.size()) {
                    return;
                }
                if (nextToRead_ < nextToTake_ + kMostFilesAhead && bytesAhead_ < kMostBytesAhead) {
                    break;
                }
                ++readersWaiting_;
                roomMade_.wait(lock);
                --readersWaiting_;
            }
            index = nextToRead_++;
        }
        Result result = read(index);
        bool wakeTaker = false;
        {
            std::lock_guard<std::mutex> lock(mutex_);
            if (result.file) {
                bytesAhead_ += result.file->bytes.size();
            }
            // Free: a file is read only while fewer than kMostFilesAhead are waiting before it.
            results_[slotOf(index)] = std::move(result);
            filled_[slotOf(index)] = true;
            wakeTaker = takerWaits_;
        }
        if (wakeTaker) {
            resultReady_.notify_all();
        }
    }
}

SmallFilePrefetch::Result SmallFilePrefetch::read(size_t index) const noexcept {
    Result result;
    try {
        const std::unique_ptr<SourceFile> file = OpenSourceFile(paths_[index]);
        // One byte more than listed, so a file that grew since shows it.
        std::vector<uint8_t> bytes(static_cast<size_t>(std::min(file->size(), kLargestFile)) + 1);
        size_t length = 0;
        for (;;) {
            if (length == bytes.size()) {
                if (bytes.size() > kLargestFile) {
                    return result;  // too large now: the writer reads it as it is
                }
                bytes.resize(static_cast<size_t>(kLargestFile) + 1);
            }
            const size_t got = file->read(bytes.data() + length, bytes.size() - length);
            if (got == 0) {
                break;
            }
            length += got;
        }
        bytes.resize(length);
        result.file = PrefetchedFile{std::move(bytes), file->time()};
    } catch (...) {
        result.failure = std::current_exception();
    }
    return result;
}

}  // namespace archive
