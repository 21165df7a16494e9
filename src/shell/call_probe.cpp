#include "shell/call_probe.h"

#ifdef VF_CALL_PROBE

#include <atomic>
#include <thread>

#include "shell/plugin_export.h"
#include "shell/shell_state.h"

namespace fmlib {

namespace {

constexpr int kLingerYields = 200;

std::atomic<int> gInside{0};
std::atomic<int> gMostInside{0};
std::atomic<long> gCalls{0};
std::atomic<uintptr_t> gLastTimerStarted{0};

}  // namespace

CallProbe::CallProbe() {
    const int inside = ++gInside;
    int most = gMostInside.load();
    while (inside > most && !gMostInside.compare_exchange_weak(most, inside)) {
    }
    ++gCalls;
    // Give another thread every chance to get in; it only can if the lock is missing.
    for (int i = 0; i < kLingerYields && gInside.load() == 1; ++i) {
        std::this_thread::yield();
    }
}

CallProbe::~CallProbe() {
    --gInside;
}

void ProbeTimerStarted(uintptr_t timer) {
    gLastTimerStarted = timer;
}

}  // namespace fmlib

extern "C" {

VF_PLUGIN_EXPORT void VfProbeCallStats(long* calls, int* mostInside) {
    *calls = fmlib::gCalls.load();
    *mostInside = fmlib::gMostInside.load();
}

VF_PLUGIN_EXPORT void VfProbeResetCallStats() {
    fmlib::gCalls = 0;
    fmlib::gMostInside = 0;
}

VF_PLUGIN_EXPORT uintptr_t VfProbeRecheckTimer() {
    return fmlib::gRecheckTimer;
}

VF_PLUGIN_EXPORT uintptr_t VfProbeLastTimerStarted() {
    return fmlib::gLastTimerStarted;
}

VF_PLUGIN_EXPORT int VfProbeEnabled() {
    return fmlib::gEnabled ? 1 : 0;
}

}  // extern "C"

#endif  // VF_CALL_PROBE
