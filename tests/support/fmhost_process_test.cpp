// The child-process runner itself.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>

#include "support/fmhost_process.h"

namespace {

// Wine's desktop and console helpers, started by a child, can hold its output pipe for as long
// as they live: the run must end with the child, with all it printed.
TEST(RunProcess, EndsWithTheChildWhileAProcessItStartedStillHoldsItsOutput) {
    const std::string name = "vf-lingering-" + std::to_string(GetCurrentProcessId());
    const std::wstring wide(name.begin(), name.end());
    const vf::test::ProcessResult run =
        vf::test::RunProcess(vf::test::BesideTest("lingering_child.exe"), {"start", name});
    const HANDLE held = OpenMutexW(SYNCHRONIZE, FALSE, wide.c_str());
    EXPECT_NE(held, nullptr) << "the run waited until the lingering process had ended";
    const HANDLE end = OpenEventW(EVENT_MODIFY_STATE, FALSE, (wide + L"-end").c_str());
    if (end != nullptr) {
        SetEvent(end);
        CloseHandle(end);
    }
    if (held != nullptr) {
        CloseHandle(held);
    }
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "started\n");
}

}  // namespace
