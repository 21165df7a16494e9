// The licence recheck timer: started by a successful init, stopped by shutdown, and never left
// behind by a refused init. Read through the instrumented build (shell/call_probe.h), which
// remembers the id of the last timer it started; KillTimer on that id tells whether it still
// exists (the init runs on this thread, the owner of thread-less timers).
#include <windows.h>

#include <gtest/gtest.h>

#include "plugin_harness.h"

namespace {

using PeekFn = uintptr_t (*)();
using FlagFn = int (*)();

class RecheckTimer : public ::testing::Test {
  protected:
    void SetUp() override {
        // Proves that KillTimer tells a live timer from a dead one here, or skips.
        const UINT_PTR own = SetTimer(nullptr, 0, 60000, nullptr);
        ASSERT_NE(own, 0u);
        ASSERT_TRUE(KillTimer(nullptr, own));
        if (KillTimer(nullptr, own)) {
            GTEST_SKIP() << "KillTimer reports success for a timer already killed on this system";
        }
        // Our own reference keeps the module (and its state) alive after the host lets go.
        module_ = LoadLibraryW(vftest::ProbePlugin().c_str());
        ASSERT_NE(module_, nullptr);
        current_ = Export<PeekFn>("VfProbeRecheckTimer");
        lastStarted_ = Export<PeekFn>("VfProbeLastTimerStarted");
        enabled_ = Export<FlagFn>("VfProbeEnabled");
        ASSERT_TRUE(current_ && lastStarted_ && enabled_);
    }
    void TearDown() override {
        if (module_ != nullptr)
            FreeLibrary(module_);
    }

    template <typename Fn>
    Fn Export(const char* name) {
        return reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

    HMODULE module_ = nullptr;
    PeekFn current_ = nullptr;
    PeekFn lastStarted_ = nullptr;
    FlagFn enabled_ = nullptr;
};

TEST_F(RecheckTimer, RunsWhileEnabledAndStopsAtShutdown) {
    fmhost::driver::Host host;
    auto& plugin = host.LoadPlugin(vftest::ProbePlugin());
    ASSERT_EQ(plugin.InitResult(), 55);
    const uintptr_t timer = lastStarted_();
    EXPECT_NE(timer, 0u);
    EXPECT_EQ(current_(), timer);
    EXPECT_EQ(enabled_(), 1);

    plugin.Unload();
    EXPECT_EQ(current_(), 0u);
    EXPECT_EQ(enabled_(), 0);
    EXPECT_FALSE(KillTimer(nullptr, timer)) << "the timer outlived the shutdown";
}

TEST_F(RecheckTimer, RefusedInitLeavesNoTimer) {
    for (int16_t failing : {1, 7}) {
        fmhost::driver::Host host;
        host.FailRegistration(failing, 1);
        auto& plugin = host.LoadPlugin(vftest::ProbePlugin());
        ASSERT_EQ(plugin.InitResult(), -2);
        const uintptr_t timer = lastStarted_();
        ASSERT_NE(timer, 0u) << "the timer starts before the registrations";
        EXPECT_EQ(current_(), 0u);
        EXPECT_EQ(enabled_(), 0);
        EXPECT_FALSE(KillTimer(nullptr, timer)) << "failing id " << failing;
    }
}

TEST_F(RecheckTimer, UnsupportedVersionStartsNoTimer) {
    fmhost::driver::Host host;
    auto& plugin = host.LoadPlugin(vftest::ProbePlugin(), 49);
    ASSERT_EQ(plugin.InitResult(), -1);
    EXPECT_EQ(lastStarted_(), 0u);
    EXPECT_EQ(current_(), 0u);
}

}  // namespace
