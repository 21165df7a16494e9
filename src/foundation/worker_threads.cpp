#include "foundation/worker_threads.h"

#include <utility>

#include "foundation/error_boxes.h"

namespace slib {

WorkerThreads::WorkerThreads(unsigned count, const std::function<void()>& body,
                             std::function<void()> stop)
    : stop_(std::move(stop)) {
    try {
        for (unsigned i = 0; i < count; ++i) {
            threads_.emplace_back([body] {
                const NoErrorBoxes noBoxes;
                body();
            });
        }
    } catch (...) {
        stopAndJoin();
        throw;
    }
}

WorkerThreads::~WorkerThreads() {
    stopAndJoin();
}

void WorkerThreads::stopAndJoin() {
    stop_();
    for (std::thread& thread : threads_) {
        if (thread.joinable()) {
            thread.join();
        }
    }
    threads_.clear();
}

}  // namespace slib
