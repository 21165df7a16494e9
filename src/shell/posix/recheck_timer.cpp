#include "shell/recheck_timer.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "shell/call_probe.h"
#include "shell/licensing.h"
#include "shell/shell_state.h"

namespace fmlib {

namespace {

constexpr std::chrono::minutes kRecheckInterval{10};

// A waiting thread that can be told to stop at once; stopping joins it, so the library is never
// unloaded under a running thread of its own.
class RecheckThread {
  public:
    RecheckThread() : thread_([this] { run(); }) {}
    ~RecheckThread() {
        {
            const std::lock_guard<std::mutex> hold(mutex_);
            stopping_ = true;
        }
        wake_.notify_one();
        thread_.join();
    }
    RecheckThread(const RecheckThread&) = delete;
    RecheckThread& operator=(const RecheckThread&) = delete;

  private:
    void run() {
        std::unique_lock<std::mutex> hold(mutex_);
        while (!wake_.wait_for(hold, kRecheckInterval, [this] { return stopping_; })) {
            licensing::ForgetCachedCheck();
        }
    }

    std::mutex mutex_;
    std::condition_variable wake_;
    bool stopping_ = false;
    std::thread thread_;
};

std::unique_ptr<RecheckThread> gRecheckThread;
uintptr_t gLastTimerId = 0;

}  // namespace

void StartRecheckTimer() {
    StopRecheckTimer();
    gRecheckThread = std::make_unique<RecheckThread>();
    gRecheckTimer = ++gLastTimerId;
    ProbeTimerStarted(gRecheckTimer);
}

void StopRecheckTimer() {
    gRecheckThread.reset();
    gRecheckTimer = 0;
}

}  // namespace fmlib
