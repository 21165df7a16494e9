#include "archive/extract_pipeline.h"

#include <memory>
#include <thread>
#include <utility>

#include "archive/read_ahead_source.h"
#include "archive/zip_reader.h"

namespace archive {

namespace {

constexpr size_t kMostSpareBuffers = 32;

// Thrown on the worker when the calling thread has given up, to unwind out of the reader.
struct ExtractionAbandoned {};

void Push(ExtractStepQueue& queue, ExtractStep step) {
    if (!queue.push(std::move(step))) {
        throw ExtractionAbandoned{};
    }
}

// The worker's side of a file: its bytes and its commit become steps.
class QueuedFile : public EntryFile {
  public:
    explicit QueuedFile(ExtractStepQueue& queue) : queue_(queue) {}
    void write(const uint8_t* data, size_t length) override {
        ExtractStep step;
        step.kind = ExtractStep::Kind::kData;
        step.data = queue_.spareBuffer();
        step.data.assign(data, data + length);
        Push(queue_, std::move(step));
    }
    void commit(const EntryTime& time) override {
        ExtractStep step;
        step.kind = ExtractStep::Kind::kCommit;
        step.time = time;
        Push(queue_, std::move(step));
    }

  private:
    ExtractStepQueue& queue_;
};

class QueuedTarget : public ExtractTarget {
  public:
    explicit QueuedTarget(ExtractStepQueue& queue) : queue_(queue) {}
    void makeFolder(const RelativePath& path) override {
        ExtractStep step;
        step.kind = ExtractStep::Kind::kFolder;
        step.path = path;
        Push(queue_, std::move(step));
    }
    std::unique_ptr<EntryFile> createFile(const RelativePath& path) override {
        ExtractStep step;
        step.kind = ExtractStep::Kind::kFile;
        step.path = path;
        Push(queue_, std::move(step));
        return std::make_unique<QueuedFile>(queue_);
    }

  private:
    ExtractStepQueue& queue_;
};

// The worker: the whole reading of the archive, ending in kFinished or kFailed. A file left
// uncommitted by a failure needs no step of its own: kFailed follows it directly.
void ReadAhead(ByteSource& source, OemDecoder decodeOem, ExtractStepQueue& queue) {
    try {
        QueuedTarget target(queue);
        ReadAheadSource readAhead(source);
        ZipReader reader(readAhead, decodeOem);
        const uint64_t count = reader.entryCount();
        for (uint64_t index = 0; index < count; ++index) {
            const ArchiveEntry entry = reader.readEntry();
            reader.extractEntry(entry, target);
        }
        Push(queue, ExtractStep{});
    } catch (const ExtractionAbandoned&) {
    } catch (...) {
        ExtractStep step;
        step.kind = ExtractStep::Kind::kFailed;
        step.failure = std::current_exception();
        queue.push(std::move(step));
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
    const size_t bytes = step.data.size();
    // A step larger than the whole allowance still goes through once the queue is empty.
    const auto room = [&] {
        return closed_ || steps_.empty() ||
               (steps_.size() < kMostStepsAhead && bytes_ + bytes <= kMostBytesAhead);
    };
    if (!room()) {
        pushing_ = true;
        roomMade_.wait(lock, room);
        pushing_ = false;
    }
    if (closed_) {
        return false;
    }
    bytes_ += bytes;
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
        stepsQueued_.wait(lock, [&] { return !steps_.empty(); });
        taking_ = false;
    }
    batch.swap(steps_);
    bytes_ = 0;
    if (pushing_) {
        roomMade_.notify_one();
    }
}

void ExtractStepQueue::close() {
    std::lock_guard<std::mutex> lock(mutex_);
    closed_ = true;
    roomMade_.notify_one();
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
    std::lock_guard<std::mutex> lock(mutex_);
    if (spare_.size() < kMostSpareBuffers) {
        buffer.clear();
        spare_.push_back(std::move(buffer));
    }
}

void ExtractArchive(ByteSource& source, ExtractTarget& target, OemDecoder decodeOem) {
    ExtractStepQueue queue;
    WorkerGuard worker(queue, std::thread(ReadAhead, std::ref(source), decodeOem, std::ref(queue)));
    // Declared after the guard: an uncommitted file is removed before the worker is joined.
    std::unique_ptr<EntryFile> file;
    std::deque<ExtractStep> batch;
    for (;;) {
        if (batch.empty()) {
            queue.takeAll(batch);
        }
        ExtractStep step = std::move(batch.front());
        batch.pop_front();
        switch (step.kind) {
            case ExtractStep::Kind::kFolder:
                target.makeFolder(step.path);
                break;
            case ExtractStep::Kind::kFile:
                file = target.createFile(step.path);
                break;
            case ExtractStep::Kind::kData:
                file->write(step.data.data(), step.data.size());
                queue.recycle(std::move(step.data));
                break;
            case ExtractStep::Kind::kCommit:
                file->commit(step.time);
                file.reset();
                break;
            case ExtractStep::Kind::kFailed:
                file.reset();
                std::rethrow_exception(step.failure);
            case ExtractStep::Kind::kFinished:
                return;
        }
    }
}

}  // namespace archive
