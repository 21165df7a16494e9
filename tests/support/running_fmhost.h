// fmhost.exe started as a child process and left running, for tests that stop it the hard way
// while it works (TerminateProcess: what a crash or an administrator's kill does to FileMaker
// Server). Its output goes nowhere; RunFmhost (fmhost_process.h) is for runs that finish.
//
//   vf::test::RunningFmhost host({"--plugin", plugin, "-e", "VFile_DeCompress( ... )"});
//   ASSERT_TRUE(host.WaitUntil([&] { return FileSize(target) > 1000000; }, 60000));
//   host.Kill();
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vf::test {

class RunningFmhost {
  public:
    // Starts fmhost.exe (beside the test) with `args` (UTF-8, quoted for Windows here), in
    // `workingDirectory` (UTF-8; empty: this process's).
    explicit RunningFmhost(const std::vector<std::string>& args,
                           const std::string& workingDirectory = std::string());
    // Kills it if it still runs.
    ~RunningFmhost();
    RunningFmhost(const RunningFmhost&) = delete;
    RunningFmhost& operator=(const RunningFmhost&) = delete;

    bool started() const { return process_ != nullptr; }
    // Polls `condition` every few milliseconds until it holds (true), the process ends or
    // `timeoutMs` pass (false).
    bool WaitUntil(const std::function<bool()>& condition, uint32_t timeoutMs);
    bool Running() const;
    // What it has written to files so far, as the system counts it (0 where it does not: Wine).
    uint64_t BytesWritten() const;
    // Ends it at once, as a kill does, and waits until it is gone.
    void Kill();
    // Waits for it to end by itself; its exit code, or -1 when it did not within `timeoutMs`.
    int Wait(uint32_t timeoutMs);

  private:
    HANDLE process_ = nullptr;
};

}  // namespace vf::test
