#include "fault_injection.h"

#include <atomic>
#include <map>
#include <mutex>

namespace fmwrapper::faults {
namespace {

thread_local int tPluginCodeDepth = 0;
thread_local FunctionCallScope* tInnermostCall = nullptr;

std::atomic<uint32_t> gFaultAt{0};
std::atomic<int32_t> gFaultCode{0};
std::atomic<int32_t> gFaultMode{0};
std::atomic<uint32_t> gCallsSinceArming{0};

std::mutex gMutex;
std::map<int16_t, int16_t> gRegistrationFaults;
std::atomic<int16_t> gFilePathFault{0};

}  // namespace

void ArmCallFault(uint32_t n, int32_t code, CallFaultMode mode) {
    gFaultAt.store(0);
    gCallsSinceArming.store(0);
    gFaultCode.store(code);
    gFaultMode.store(static_cast<int32_t>(mode));
    gFaultAt.store(code == 0 ? 0 : n);
}

int32_t TakeCallFault() {
    if (tPluginCodeDepth == 0)
        return 0;
    const uint32_t at = gFaultAt.load();
    if (at == 0)
        return 0;
    if (gFaultMode.load() == static_cast<int32_t>(CallFaultMode::kFromNow)) {
        if (gCallsSinceArming.fetch_add(1) + 1 != at)
            return 0;
        gFaultAt.store(0);  // one fault only
        return gFaultCode.load();
    }
    if (tInnermostCall == nullptr)
        return 0;
    return ++tInnermostCall->calls_ == at ? gFaultCode.load() : 0;
}

void SetRegistrationFault(int16_t functionId, int16_t error) {
    std::lock_guard<std::mutex> lock(gMutex);
    if (error == 0) {
        gRegistrationFaults.erase(functionId);
    } else {
        gRegistrationFaults[functionId] = error;
    }
}

int16_t RegistrationFault(int16_t functionId) {
    std::lock_guard<std::mutex> lock(gMutex);
    auto found = gRegistrationFaults.find(functionId);
    return found == gRegistrationFaults.end() ? 0 : found->second;
}

void SetFilePathFault(int16_t error) {
    gFilePathFault.store(error);
}
int16_t FilePathFault() {
    return gFilePathFault.load();
}

void ClearAll() {
    ArmCallFault(0, 0, CallFaultMode::kFromNow);
    std::lock_guard<std::mutex> lock(gMutex);
    gRegistrationFaults.clear();
    gFilePathFault.store(0);
}

PluginCodeScope::PluginCodeScope() {
    ++tPluginCodeDepth;
}
PluginCodeScope::~PluginCodeScope() {
    --tPluginCodeDepth;
}

FunctionCallScope::FunctionCallScope() : outer_(tInnermostCall) {
    tInnermostCall = this;
}
FunctionCallScope::~FunctionCallScope() {
    tInnermostCall = outer_;
}

}  // namespace fmwrapper::faults
