// Holds gCallMutex for one lifecycle message or one function call. The mutex is not recursive:
// a thread that already holds it (the host re-entering the plug-in from a modal loop the plug-in
// opened, say) gets std::system_error "resource deadlock would occur" instead of hanging.
#pragma once

namespace fmlib {

class CallLock {
  public:
    CallLock();
    ~CallLock();
    CallLock(const CallLock&) = delete;
    CallLock& operator=(const CallLock&) = delete;
};

}  // namespace fmlib
