// The ten-minute licence recheck timer. Thread-less (no window): its callback runs from the
// message loop of the thread that started it and only clears licensing's cached check.
#pragma once

namespace fmlib {

// Restarts the timer (an earlier one is killed first) and records its id in gRecheckTimer.
void StartRecheckTimer();
// Kills the timer if one runs and zeroes gRecheckTimer.
void StopRecheckTimer();

}  // namespace fmlib
