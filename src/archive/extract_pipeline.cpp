#include "archive/extract_pipeline.h"

#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "archive/archive_failures.h"
#include "archive/file_writer_pool.h"
#include "archive/read_ahead_source.h"
#include "archive/zip_reader.h"
#include "foundation/error_boxes.h"

namespace archive {

namespace {

constexpr size_t kMostSpareBuffers = 32;
// Larger buffers are not kept for reuse: the spare ones stay a few megabytes in all.
constexpr size_t kLargestSpareBuffer = 256 * 1024;

// Thrown on the worker when the calling thread has given up, to unwind out of the reader.
struct ExtractionAbandoned {};

void Push(ExtractStepQueue& queue, ExtractStep step) {
    if (!queue.push(std::move(step))) {
        throw ExtractionAbandoned{};
    }
}

// The worker: the whole reading and checking of the archive, ending in kFinished or a failure
// handed to the queue.
void ReadAhead(ByteSource& source, OemDecoder decodeOem, ExtractStepQueue& queue) {
    const slib::NoErrorBoxes noBoxes;
    try {
        ReadAheadSource readAhead(source);
        ZipReader reader(readAhead, decodeOem);
        const uint64_t count = reader.entryCount();
        // An entry whose name holds a NUL cannot be named on disk, but says nothing about the
        // others: it is left out, the rest unpacks, and the call still fails for it at the end.
        std::exception_ptr leftOut;
        for (uint64_t index = 0; index < count; ++index) {
            ArchiveEntry entry = reader.readEntry();
            if (entry.name.find(u'\0') != std::u16string::npos) {
                if (!leftOut) {
                    try {
                        FailEntryRefused(entry.name, "its name holds a NUL character");
                    } catch (...) {
                        leftOut = std::current_exception();
                    }
                }
                continue;
            }
            EntryData data = reader.locateData(entry);
            ExtractStep step;
            step.path = std::move(data.path);
            if (entry.folder) {
                step.kind = ExtractStep::Kind::kFolder;
                Push(queue, std::move(step));
                continue;
            }
            step.kind = ExtractStep::Kind::kFile;
            step.dataStart = data.start;
            step.whole = EntryDecoder::DecodesWhole(entry);
            if (step.whole) {
                step.claim = queue.claimWholeEntry(EntryDecoder::WholeEntryBytes(entry));
                if (!step.claim) {
                    throw ExtractionAbandoned{};
                }
                step.data = queue.spareBuffer();
                reader.readData(entry, data, step.data);
            }
            step.entry = std::move(entry);
            Push(queue, std::move(step));
        }
        ExtractStep finished;
        finished.failure = leftOut;
        Push(queue, std::move(finished));
    } catch (const ExtractionAbandoned&) {
    } catch (...) {
        // Handed over without a step: making one could itself fail for want of memory.
        queue.fail(std::current_exception());
    }
}

// Stops and joins the worker however the calling thread leaves.
class WorkerGuard {
  public:
    WorkerGuard(ExtractStepQueue& queue, std::thread worker)
        : queue_(queue), worker_(std::move(worker)) {}
    ~WorkerGuard() {
        queue_.close();
        worker_.join();
    }
    WorkerGuard(const WorkerGuard&) = delete;
    WorkerGuard& operator=(const WorkerGuard&) = delete;

  private:
    ExtractStepQueue& queue_;
    std::thread worker_;
};

}  // namespace

bool ExtractStepQueue::push(ExtractStep step) {
    std::unique_lock<std::mutex> lock(mutex_);
    const auto room = [&] { return closed_ || steps_.size() < kMostStepsAhead; };
    if (!room()) {
        pushing_ = true;
        roomMade_.wait(lock, room);
        pushing_ = false;
    }
    if (closed_) {
        return false;
    }
    steps_.push_back(std::move(step));
    if (taking_) {
        stepsQueued_.notify_one();
    }
    return true;
}

void ExtractStepQueue::takeAll(std::deque<ExtractStep>& batch) {
    std::unique_lock<std::mutex> lock(mutex_);
    if (steps_.empty()) {
        taking_ = true;
        stepsQueued_.wait(lock, [&] { return !steps_.empty() || failure_; });
        taking_ = false;
    }
    if (steps_.empty()) {
        std::rethrow_exception(failure_);
    }
    batch.swap(steps_);
    if (pushing_) {
        roomMade_.notify_one();
    }
}

void ExtractStepQueue::fail(std::exception_ptr failure) noexcept {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        failure_ = std::move(failure);
    }
    stepsQueued_.notify_one();
}

void ExtractStepQueue::close() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        closed_ = true;
        roomMade_.notify_one();
    }
    wholeEntries_.close();
}

std::vector<uint8_t> ExtractStepQueue::spareBuffer() {
    std::lock_guard<std::mutex> lock(mutex_);
    if (spare_.empty()) {
        return {};
    }
    std::vector<uint8_t> buffer = std::move(spare_.back());
    spare_.pop_back();
    return buffer;
}

void ExtractStepQueue::recycle(std::vector<uint8_t> buffer) {
    if (buffer.capacity() > kLargestSpareBuffer) {
        return;
    }
    std::lock_guard<std::mutex> lock(mutex_);
    if (spare_.size() < kMostSpareBuffers) {
        buffer.clear();
        spare_.push_back(std::move(buffer));
    }
}

namespace {

// A folder entry, made when its turn in archive order comes, after the files before it.
class FolderEntry : public EntryFile {
  public:
    FolderEntry(ExtractTarget& target, RelativePath path)
        : target_(target), path_(std::move(path)) {}
    void write(const uint8_t*, size_t) override {}
    void commit(const EntryTime&) override { target_.makeFolder(path_); }

  private:
    ExtractTarget& target_;
    RelativePath path_;
};

// The calling thread's side: files are handed to the writer pool, folders straight to the commit
// order. Everything is put in its place in archive order, so every name meets what the entries
// before it left, whatever spelling reaches it (an 8.3 short name, another letter case), as on
// one thread.
class FileDispatcher {
  public:
    FileDispatcher(ByteSource& archive, ExtractTarget& target, ExtractStepQueue& queue)
        : target_(target), pool_(archive, target, order_, [&queue](std::vector<uint8_t> bytes) {
              queue.recycle(std::move(bytes));
          }) {}

    void makeFolder(ExtractStep& step) {
        rethrowPoolFailure();  // no later entry once an earlier one failed
        order_.ready(sequence_++, std::make_unique<FolderEntry>(target_, std::move(step.path)),
                     EntryTime(), nullptr);
    }
    // Files are handed to the pool in batches (see flush).
    void submit(ExtractStep& step) {
        FileJob job;
        job.sequence = sequence_++;
        job.path = std::move(step.path);
        job.entry = std::move(step.entry);
        job.dataStart = step.dataStart;
        job.whole = step.whole;
        job.encoded = std::move(step.data);
        job.claim = std::move(step.claim);
        batchBytes_ += job.encoded.size();
        batch_.push_back(std::move(job));
        if (batchBytes_ >= kMostBatchBytes) {
            flush();
        }
    }
    // Hands the batch over: one wake of the pool for many files.
    void flush() {
        if (!batch_.empty()) {
            pool_.submit(batch_);
            batchBytes_ = 0;
        }
    }
    // Every file handed over is finished; throws the first failure among them, if any.
    void finish() {
        flush();
        pool_.drain();
        rethrowPoolFailure();
    }
    // Every file handed over is finished (the failure that stops the rest comes after them).
    void abandon() {
        flush();
        pool_.drain();
    }
    // The first failure of a file handed over, in archive order.
    void rethrowPoolFailure() {
        if (std::exception_ptr failure = order_.failure()) {
            std::rethrow_exception(failure);
        }
    }

  private:
    static constexpr size_t kMostBatchBytes = 4 * 1024 * 1024;

    ExtractTarget& target_;
    CommitOrder order_;
    FileWriterPool pool_;
    uint64_t sequence_ = 0;
    std::vector<FileJob> batch_;
    size_t batchBytes_ = 0;
};

}  // namespace

void ExtractArchive(ByteSource& source, ExtractTarget& target, OemDecoder decodeOem) {
    ExtractStepQueue queue;
    WorkerGuard worker(queue, std::thread(ReadAhead, std::ref(source), decodeOem, std::ref(queue)));
    // Declared after the guard: files in progress are removed before the worker is joined.
    FileDispatcher files(source, target, queue);
    std::deque<ExtractStep> batch;
    try {
        for (;;) {
            if (batch.empty()) {
                files.flush();
                files.rethrowPoolFailure();
                queue.takeAll(batch);
            }
            ExtractStep step = std::move(batch.front());
            batch.pop_front();
            switch (step.kind) {
                case ExtractStep::Kind::kFolder:
                    files.makeFolder(step);
                    break;
                case ExtractStep::Kind::kFile:
                    files.submit(step);
                    break;
                case ExtractStep::Kind::kFinished:
                    files.finish();
                    if (step.failure) {
                        std::rethrow_exception(step.failure);
                    }
                    return;
            }
        }
    } catch (...) {
        // A failure of an earlier file, still being written by the pool, comes first.
        files.abandon();
        files.rethrowPoolFailure();
        throw;
    }
}

}  // namespace archive
