#include "shell/call_lock.h"

#include <windows.h>

#include <atomic>
#include <system_error>

#include "shell/shell_state.h"

// VF_CALL_PROBE_WITHOUT_LOCK exists only for the probe build that shows the concurrency test can
// see an overlap at all; nothing else may define it.

namespace fmlib {

namespace {

// The thread holding gCallMutex, 0 when none. Only the holder writes it, so another thread can
// never read its own id here by mistake.
std::atomic<DWORD> gCallMutexOwner{0};

}  // namespace

CallLock::CallLock() {
    const DWORD self = GetCurrentThreadId();
    if (gCallMutexOwner.load() == self) {
        throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
    }
#ifndef VF_CALL_PROBE_WITHOUT_LOCK
    gCallMutex.lock();
#endif
    gCallMutexOwner = self;
}

CallLock::~CallLock() {
    gCallMutexOwner = 0;
#ifndef VF_CALL_PROBE_WITHOUT_LOCK
    gCallMutex.unlock();
#endif
}

}  // namespace fmlib
