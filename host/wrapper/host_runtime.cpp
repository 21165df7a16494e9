#include "host_runtime.h"

#include "host_system.h"

namespace fmwrapper {

HostRuntime& HostRuntime::Instance() {
    static HostRuntime runtime;
    return runtime;
}

namespace {

constexpr uint64_t kFirstSession = 1;

}  // namespace

HostRuntime::HostRuntime() : settings_(DefaultSettings()), registrations_(registry_) {
    UseSession(kFirstSession);
}

// Like a new database of the host: "Untitled.fmp12" in the current folder (it need not exist).
HostSettings HostRuntime::DefaultSettings() {
    HostSettings settings;
    settings.filePath = HostFilePath(AbsoluteNativePath(u"Untitled.fmp12"));
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
    {
        std::lock_guard<std::mutex> lock(mutex_);
        settings_ = DefaultSettings();
        sessions_.clear();
        current_ = nullptr;
        registrations_.ClearLog();
    }
    UseSession(kFirstSession);
}

fmhost::Session& HostRuntime::CurrentSession() {
    std::lock_guard<std::mutex> lock(mutex_);
    return *current_;
}

void HostRuntime::UseSession(uint64_t id) {
    std::lock_guard<std::mutex> lock(mutex_);
    std::unique_ptr<fmhost::Session>& session = sessions_[id];
    if (!session)
        session = std::make_unique<fmhost::Session>(id);
    current_ = session.get();
}

bool HostRuntime::EndSession(uint64_t id) {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = sessions_.find(id);
    if (found == sessions_.end())
        return false;
    const bool wasCurrent = found->second.get() == current_;
    found->second = std::make_unique<fmhost::Session>(id);
    if (wasCurrent)
        current_ = found->second.get();
    else
        sessions_.erase(found);
    return true;
}

std::vector<uint64_t> HostRuntime::SessionIds() const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<uint64_t> ids;
    for (const auto& entry : sessions_)
        ids.push_back(entry.first);
    return ids;
}

uint64_t HostRuntime::FileId() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return settings_.fileMode == FileMode::kNone ? 0 : 1;
}

}  // namespace fmwrapper
