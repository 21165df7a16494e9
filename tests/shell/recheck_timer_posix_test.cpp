// The recheck timer where no message loop runs it: a thread of the plug-in's own, which a stop
// must end at once (the host unloads the library right after shutdown).
#include <gtest/gtest.h>

#include "shell/recheck_timer.h"
#include "shell/shell_state.h"

namespace {

TEST(RecheckTimerPosix, EachStartIsANewTimerAndStopEndsIt) {
    ASSERT_EQ(fmlib::gRecheckTimer, 0u);
    fmlib::StartRecheckTimer();
    const uintptr_t first = fmlib::gRecheckTimer;
    EXPECT_NE(first, 0u);
    fmlib::StartRecheckTimer();
    EXPECT_NE(fmlib::gRecheckTimer, 0u);
    EXPECT_NE(fmlib::gRecheckTimer, first);
    // Joins the waiting thread: a stop that did not wake it would hang here for ten minutes.
    fmlib::StopRecheckTimer();
    EXPECT_EQ(fmlib::gRecheckTimer, 0u);
    fmlib::StopRecheckTimer();
    EXPECT_EQ(fmlib::gRecheckTimer, 0u);
}

}  // namespace
