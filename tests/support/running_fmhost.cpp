#include "support/running_fmhost.h"

#include "support/fmhost_process.h"

namespace vf::test {
RunningFmhost::RunningFmhost(const std::vector<std::string>& args,
                             const std::string& workingDirectory) {
    std::string commandLine = QuoteArgument(BesideTest("fmhost.exe"));
    for (const std::string& arg : args)
        commandLine += " " + QuoteArgument(arg);
    std::wstring command = WideFromUtf8(commandLine);
    const std::wstring directory = WideFromUtf8(workingDirectory);
    // No standard handles: nothing the child prints can hold the test up.
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, &command[0], nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                       directory.empty() ? nullptr : directory.c_str(), &startup, &process)) {
        CloseHandle(process.hThread);
        process_ = process.hProcess;
    }
}

RunningFmhost::~RunningFmhost() {
    if (process_ != nullptr) {
        Kill();
        CloseHandle(process_);
    }
}

bool RunningFmhost::Running() const {
    return process_ != nullptr && WaitForSingleObject(process_, 0) == WAIT_TIMEOUT;
}

uint64_t RunningFmhost::BytesWritten() const {
    IO_COUNTERS counters{};
    return process_ != nullptr && GetProcessIoCounters(process_, &counters)
               ? counters.WriteTransferCount
               : 0;
}

bool RunningFmhost::WaitUntil(const std::function<bool()>& condition, uint32_t timeoutMs) {
    const ULONGLONG end = GetTickCount64() + timeoutMs;
    while (GetTickCount64() < end) {
        if (condition())
            return true;
        if (!Running())
            return condition();
        Sleep(5);
    }
    return false;
}

void RunningFmhost::Kill() {
    if (Running()) {
        TerminateProcess(process_, 9);
    }
    if (process_ != nullptr) {
        WaitForSingleObject(process_, INFINITE);
    }
}

int RunningFmhost::Wait(uint32_t timeoutMs) {
    if (process_ == nullptr || WaitForSingleObject(process_, timeoutMs) != WAIT_OBJECT_0)
        return -1;
    DWORD exitCode = 0;
    GetExitCodeProcess(process_, &exitCode);
    return static_cast<int>(exitCode);
}

}  // namespace vf::test
