#include "shell/call_lock.h"

#include <atomic>
#include <system_error>
#include <thread>

#include "shell/shell_state.h"

// VF_CALL_PROBE_WITHOUT_LOCK exists only for the probe build that shows the concurrency test can
// see an overlap at all; nothing else may define it.

namespace fmlib {

namespace {

// The thread holding gCallMutex, no thread's id when none. Only the holder writes it, so another
// thread can never read its own id here by mistake.
std::atomic<std::thread::id> gCallMutexOwner{};

}  // namespace

CallLock::CallLock() {
    const std::thread::id self = std::this_thread::get_id();
    if (gCallMutexOwner.load() == self) {
        throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
    }
#ifndef VF_CALL_PROBE_WITHOUT_LOCK
    gCallMutex.lock();
#endif
    gCallMutexOwner = self;
}

CallLock::~CallLock() {
    gCallMutexOwner = std::thread::id();
#ifndef VF_CALL_PROBE_WITHOUT_LOCK
    gCallMutex.unlock();
#endif
}

}  // namespace fmlib
