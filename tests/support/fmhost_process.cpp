#include "support/fmhost_process.h"

#include <windows.h>

#include <map>
#include <thread>

namespace vf::test {
namespace {

// A child that hangs must not hang the test run; no correct run comes near this.
constexpr DWORD kSafetyLimitMs = 300000;
// How long a reader waits for the child between looks at its pipe.
constexpr DWORD kPollMs = 5;

std::string Narrow(const std::wstring& wide) {
    if (wide.empty())
        return {};
    const int n = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()),
                                      nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), &out[0], n, nullptr,
                        nullptr);
    return out;
}

class Handle {
  public:
    Handle() = default;
    explicit Handle(HANDLE h) : h_(h) {}
    ~Handle() { Close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    HANDLE* Out() { return &h_; }
    HANDLE Get() const { return h_; }
    void Close() {
        if (h_ != nullptr && h_ != INVALID_HANDLE_VALUE)
            CloseHandle(h_);
        h_ = nullptr;
    }

  private:
    HANDLE h_ = nullptr;
};

// A pipe whose child end is inheritable and whose parent end is not.
bool MakePipe(Handle& parentEnd, Handle& childEnd, bool childWrites) {
    SECURITY_ATTRIBUTES inherit{sizeof(inherit), nullptr, TRUE};
    Handle read;
    Handle write;
    if (!CreatePipe(read.Out(), write.Out(), &inherit, 0))
        return false;
    Handle& parent = childWrites ? read : write;
    Handle& child = childWrites ? write : read;
    SetHandleInformation(parent.Get(), HANDLE_FLAG_INHERIT, 0);
    std::swap(*parentEnd.Out(), *parent.Out());
    std::swap(*childEnd.Out(), *child.Out());
    return true;
}

// Reads what the child writes until it has exited and the pipe holds nothing more. End of file
// alone is not enough: a program the child started (Wine starts its desktop and console helpers
// so) may hold the pipe's write end for as long as it lives, and a read would then never return.
void Drain(HANDLE pipe, HANDLE process, std::string& into) {
    char buffer[4096];
    for (;;) {
        DWORD available = 0;
        if (!PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr)) {
            // Every write end is closed. Wine then fails the peek even while the pipe still holds
            // what the child wrote before it exited; reads take that and end, never blocking.
            DWORD got = 0;
            while (ReadFile(pipe, buffer, sizeof(buffer), &got, nullptr) && got != 0)
                into.append(buffer, got);
            return;
        }
        if (available == 0) {
            // Once it has exited, all it wrote is in the pipe.
            if (WaitForSingleObject(process, kPollMs) == WAIT_OBJECT_0 &&
                (!PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr) || available == 0))
                return;
            continue;
        }
        DWORD got = 0;
        const DWORD wanted = available < sizeof(buffer) ? available : DWORD{sizeof(buffer)};
        if (!ReadFile(pipe, buffer, wanted, &got, nullptr) || got == 0)
            return;
        into.append(buffer, got);
    }
}

// The parent's environment with the given variables set, as a sorted Unicode block.
std::wstring EnvironmentBlock(const std::vector<std::pair<std::string, std::string>>& extra) {
    std::map<std::wstring, std::wstring, std::less<>> vars;
    wchar_t* block = GetEnvironmentStringsW();
    for (const wchar_t* p = block; *p != L'\0'; p += wcslen(p) + 1) {
        const std::wstring entry(p);
        const size_t eq = entry.find(L'=', 1);  // "=C:=C:\..." entries start with '='
        if (eq != std::wstring::npos)
            vars[entry.substr(0, eq)] = entry.substr(eq + 1);
    }
    FreeEnvironmentStringsW(block);
    for (const auto& [name, value] : extra)
        vars[WideFromUtf8(name)] = WideFromUtf8(value);
    std::wstring out;
    for (const auto& [name, value] : vars)
        out += name + L"=" + value + L'\0';
    return out + L'\0';
}

}  // namespace

std::wstring WideFromUtf8(const std::string& utf8) {
    if (utf8.empty())
        return {};
    const int n =
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring out(static_cast<size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), &out[0], n);
    return out;
}

std::string QuoteArgument(const std::string& arg) {
    if (!arg.empty() && arg.find_first_of(" \t\n\v\"") == std::string::npos)
        return arg;
    std::string out = "\"";
    size_t backslashes = 0;
    for (char c : arg) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        // Backslashes count double only when a quote follows them.
        out.append(c == '"' ? backslashes * 2 + 1 : backslashes, '\\');
        backslashes = 0;
        out += c;
    }
    out.append(backslashes * 2, '\\');
    return out + "\"";
}

std::string BesideTest(const std::string& fileName) {
    wchar_t path[MAX_PATH * 4] = {};
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH * 4);
    std::wstring full(path, length);
    full = full.substr(0, full.find_last_of(L"\\/") + 1);
    return Narrow(full) + fileName;
}

ProcessResult RunFmhost(const std::vector<std::string>& args, const ProcessOptions& options) {
    return RunProcess(BesideTest("fmhost.exe"), args, options);
}

ProcessResult RunProcess(const std::string& exe, const std::vector<std::string>& args,
                         const ProcessOptions& options) {
    ProcessResult result;
    Handle outRead, outWrite, errRead, errWrite, inWrite, inRead;
    if (!MakePipe(outRead, outWrite, true) || !MakePipe(errRead, errWrite, true) ||
        !MakePipe(inWrite, inRead, false)) {
        return result;
    }
    std::string commandLine = QuoteArgument(exe);
    for (const std::string& arg : args)
        commandLine += " " + QuoteArgument(arg);
    std::wstring command = WideFromUtf8(commandLine);
    std::wstring environment = EnvironmentBlock(options.environment);
    const std::wstring directory = WideFromUtf8(options.workingDirectory);

    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = inRead.Get();
    startup.hStdOutput = outWrite.Get();
    startup.hStdError = errWrite.Get();
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, &command[0], nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                        &environment[0], directory.empty() ? nullptr : directory.c_str(), &startup,
                        &process)) {
        result.err =
            "could not start " + exe + " (system error " + std::to_string(GetLastError()) + ")";
        return result;
    }
    Handle processHandle(process.hProcess);
    Handle threadHandle(process.hThread);
    // Only the child keeps its ends: end-of-file arrives when it exits.
    outWrite.Close();
    errWrite.Close();
    inRead.Close();

    std::thread outReader(Drain, outRead.Get(), processHandle.Get(), std::ref(result.out));
    std::thread errReader(Drain, errRead.Get(), processHandle.Get(), std::ref(result.err));
    DWORD written = 0;
    if (!options.input.empty()) {
        WriteFile(inWrite.Get(), options.input.data(), static_cast<DWORD>(options.input.size()),
                  &written, nullptr);
    }
    inWrite.Close();

    if (WaitForSingleObject(processHandle.Get(), kSafetyLimitMs) != WAIT_OBJECT_0) {
        TerminateProcess(processHandle.Get(), 1);
        WaitForSingleObject(processHandle.Get(), INFINITE);
        outReader.join();
        errReader.join();
        result.err += "\n(stopped: still running after the safety limit)";
        return result;
    }
    outReader.join();
    errReader.join();
    DWORD exitCode = 0;
    GetExitCodeProcess(processHandle.Get(), &exitCode);
    result.exitCode = static_cast<int>(exitCode);
    return result;
}

}  // namespace vf::test
