#include "shell/recheck_timer.h"

#include <windows.h>

#include "shell/call_probe.h"
#include "shell/licensing.h"
#include "shell/shell_state.h"

namespace fmlib {

namespace {

constexpr UINT kRecheckIntervalMs = 10 * 60 * 1000;

void CALLBACK OnRecheckTimer(HWND, UINT, UINT_PTR, DWORD) {
    licensing::ForgetCachedCheck();
}

}  // namespace

void StartRecheckTimer() {
    StopRecheckTimer();
    gRecheckTimer = SetTimer(nullptr, 0, kRecheckIntervalMs, OnRecheckTimer);
    ProbeTimerStarted(gRecheckTimer);
}

void StopRecheckTimer() {
    if (gRecheckTimer != 0) {
        KillTimer(nullptr, gRecheckTimer);
        gRecheckTimer = 0;
    }
}

}  // namespace fmlib
