// Eight threads calling the plug-in at once through the host never overlap inside it. Measured
// with the instrumented builds of the plug-in (shell/call_probe.h): every call counts how many
// calls are inside and lingers until another one arrives or a bounded number of yields passes.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "plugin_harness.h"

namespace {

constexpr int kThreads = 8;
constexpr int kCallsPerThread = 25;

struct Stats {
    long calls = 0;
    int mostInside = 0;
};

// Loads `path` (kept loaded by our own reference so its counters can be read), runs the calls
// from kThreads threads and returns what the probe saw.
Stats RunConcurrently(const std::wstring& path) {
    HMODULE module = LoadLibraryW(path.c_str());
    EXPECT_NE(module, nullptr) << "cannot load " << std::string(path.begin(), path.end());
    if (module == nullptr)
        return {};
    using StatsFn = void (*)(long*, int*);
    using ResetFn = void (*)();
    auto stats = reinterpret_cast<StatsFn>(
        reinterpret_cast<void*>(GetProcAddress(module, "VfProbeCallStats")));
    auto reset = reinterpret_cast<ResetFn>(
        reinterpret_cast<void*>(GetProcAddress(module, "VfProbeResetCallStats")));
    Stats seen;
    if (stats != nullptr && reset != nullptr) {
        fmhost::driver::Host host;
        auto& plugin = host.LoadPlugin(path);
        EXPECT_TRUE(plugin.Enabled());
        reset();
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&host, t] {
                for (int i = 0; i < kCallsPerThread; ++i) {
                    // A successful call and a failing one (which evaluates inside the host).
                    const auto call =
                        (i + t) % 2 == 0 ? u"VFile_Version( \"long\" )" : u"VFile_Delete()";
                    host.Evaluate(call);
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        stats(&seen.calls, &seen.mostInside);
    } else {
        ADD_FAILURE() << "not an instrumented build";
    }
    FreeLibrary(module);
    return seen;
}

TEST(Concurrency, CallsFromEightThreadsNeverOverlapInsideThePlugin) {
    const Stats seen = RunConcurrently(vftest::ProbePlugin());
    EXPECT_EQ(seen.calls, kThreads * kCallsPerThread) << "every call went through the frame";
    EXPECT_EQ(seen.mostInside, 1);
}

TEST(Concurrency, TheProbeSeesOverlapWhenTheLockIsMissing) {
    // The same build without the call mutex: proves the measurement above can fail at all.
    const Stats seen = RunConcurrently(vftest::UnlockedProbePlugin());
    EXPECT_EQ(seen.calls, kThreads * kCallsPerThread);
    EXPECT_GT(seen.mostInside, 1);
}

}  // namespace
