#include "host_runtime.h"

#include <windows.h>

#include "path_syntax.h"

namespace fmwrapper {

HostRuntime& HostRuntime::Instance() {
    static HostRuntime runtime;
    return runtime;
}

HostRuntime::HostRuntime()
    : settings_(DefaultSettings()),
      session_(std::make_unique<fmhost::Session>()),
      registrations_(registry_) {}

// Like a new database of the host: "Untitled.fmp12" in the current folder (it need not exist).
HostSettings HostRuntime::DefaultSettings() {
    HostSettings settings;
    wchar_t full[MAX_PATH * 4];
    const DWORD length = GetFullPathNameW(L"Untitled.fmp12", MAX_PATH * 4, full, nullptr);
    const std::u16string native =
        length > 0 && length < MAX_PATH * 4
            ? std::u16string(reinterpret_cast<const char16_t*>(full), length)
            : u"C:\\Untitled.fmp12";
    settings.filePath = u"file:" + HostPathFromNative(native);
    return settings;
}

HostSettings HostRuntime::Settings() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return settings_;
}

void HostRuntime::SetSettings(HostSettings settings) {
    std::lock_guard<std::mutex> lock(mutex_);
    settings_ = std::move(settings);
}

void HostRuntime::Reset() {
    std::lock_guard<std::mutex> lock(mutex_);
    settings_ = DefaultSettings();
    session_ = std::make_unique<fmhost::Session>();
    registrations_.ClearLog();
}

uint64_t HostRuntime::FileId() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return settings_.fileMode == FileMode::kNone ? 0 : 1;
}

}  // namespace fmwrapper
