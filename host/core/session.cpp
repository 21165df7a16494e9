#include "core/session.h"

#include <atomic>

#include "core/case_mapping.h"

namespace fmhost {
namespace {

uint64_t NextSessionId() {
    static std::atomic<uint64_t> counter{0};
    return ++counter;
}

}  // namespace

Session::Session() : id_(NextSessionId()) {}

Value Session::GetGlobal(std::u16string_view name) const {
    const std::u16string key = ToLower(name);
    std::lock_guard<std::mutex> lock(globalsMutex_);
    auto found = globals_.find(key);
    return found == globals_.end() ? Value() : found->second;
}

void Session::SetGlobal(std::u16string_view name, Value value) {
    std::u16string key = ToLower(name);
    std::lock_guard<std::mutex> lock(globalsMutex_);
    globals_[std::move(key)] = std::move(value);
}

bool Session::HasGlobal(std::u16string_view name) const {
    const std::u16string key = ToLower(name);
    std::lock_guard<std::mutex> lock(globalsMutex_);
    return globals_.count(key) != 0;
}

}  // namespace fmhost
