// Test-only instrument of the call frame, the entry point and the recheck timer. The shipped
// plug-in compiles it to nothing. A build with VF_CALL_PROBE counts how many calls are inside the
// plug-in at once, lingers in each call so that a missing lock would show, remembers the last
// timer started, and exports what it saw (VfProbe* in call_probe.cpp) for the tests to read.
#pragma once

#include <cstdint>

namespace fmlib {

class CallProbe {
  public:
#ifdef VF_CALL_PROBE
    CallProbe();
    ~CallProbe();
#else
    CallProbe() {}
#endif
    CallProbe(const CallProbe&) = delete;
    CallProbe& operator=(const CallProbe&) = delete;
};

#ifdef VF_CALL_PROBE
void ProbeTimerStarted(uintptr_t timer);
#else
inline void ProbeTimerStarted(uintptr_t) {}
#endif

}  // namespace fmlib
