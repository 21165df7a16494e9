// The ten-minute licence recheck timer. Its callback only clears licensing's cached check. On
// Windows it is thread-less (no window) and runs from the message loop of the thread that
// started it; a server engine on Linux has no such loop, so there a thread of ours waits it out.
#pragma once

namespace fmlib {

// Restarts the timer (an earlier one is killed first) and records its id in gRecheckTimer.
void StartRecheckTimer();
// Kills the timer if one runs and zeroes gRecheckTimer.
void StopRecheckTimer();

}  // namespace fmlib
