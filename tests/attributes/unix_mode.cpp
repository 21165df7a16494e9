#include "attributes/unix_mode.h"

#include <windows.h>

#include "foundation/windows/unique_handles.h"

namespace slib {
namespace test {

namespace {

std::u16string TempFolder() {
    wchar_t folder[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    std::u16string text(reinterpret_cast<const char16_t*>(folder), length);
    while (!text.empty() && text.back() == u'\\') {
        text.pop_back();
    }
    return text;
}

// Wine's own export: the Unix path of a Windows one, allocated on the process heap.
std::optional<std::string> UnixPathOf(const std::u16string& windowsPath) {
    using ToUnix = char*(CDECL*)(const wchar_t*);
    const auto toUnix = reinterpret_cast<ToUnix>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (toUnix == nullptr) {
        return std::nullopt;
    }
    char* unixPath = toUnix(reinterpret_cast<const wchar_t*>(windowsPath.c_str()));
    if (unixPath == nullptr) {
        return std::nullopt;
    }
    std::string path(unixPath);
    HeapFree(GetProcessHeap(), 0, unixPath);
    return path;
}

// The output of a host command, run by the host's shell. Wine starts a Unix program without
// waiting for it, so the command's output goes to a file that appears whole when it is done.
std::optional<std::string> RunOnHost(const std::string& command) {
    const std::optional<std::string> tempFolder = UnixPathOf(TempFolder());
    if (!tempFolder) {
        return std::nullopt;
    }
    static int counter = 0;
    const std::string name =
        "vf-host-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++counter);
    const std::string output = *tempFolder + "/" + name;
    const std::string line = "/bin/sh -c \"(" + command + ") > " + output + ".part 2>&1; mv " +
                             output + ".part " + output + "\"";
    std::wstring wideLine(line.begin(), line.end());
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, &wideLine[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
        return std::nullopt;
    }
    const UniqueHandle processHandle(process.hProcess);
    const UniqueHandle threadHandle(process.hThread);
    const std::u16string result = TempFolder() + u"\\" + std::u16string(name.begin(), name.end());
    for (int wait = 0; wait < 1000; ++wait) {
        const UniqueFileHandle file(CreateFileW(reinterpret_cast<const wchar_t*>(result.c_str()),
                                                GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                                nullptr, OPEN_EXISTING, 0, nullptr));
        if (file.valid()) {
            std::string text;
            char buffer[256];
            DWORD got = 0;
            while (ReadFile(file.get(), buffer, sizeof buffer, &got, nullptr) && got > 0) {
                text.append(buffer, got);
            }
            DeleteFileW(reinterpret_cast<const wchar_t*>(result.c_str()));
            while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
                text.pop_back();
            }
            return text;
        }
        Sleep(10);
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> HostUnixMode(const std::u16string& windowsPath) {
    const std::optional<std::string> unixPath = UnixPathOf(windowsPath);
    if (!unixPath) {
        return std::nullopt;
    }
    const std::optional<std::string> mode = RunOnHost("stat -c %a '" + *unixPath + "'");
    if (!mode || mode->empty() || mode->find_first_not_of("01234567") != std::string::npos) {
        return std::nullopt;
    }
    return mode;
}

bool SetHostUnixMode(const std::u16string& windowsPath, const std::string& mode) {
    const std::optional<std::string> unixPath = UnixPathOf(windowsPath);
    return unixPath && RunOnHost("chmod " + mode + " '" + *unixPath + "'") &&
           HostUnixMode(windowsPath) == mode;
}

}  // namespace test
}  // namespace slib
