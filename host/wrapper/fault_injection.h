// Faults a test can inject into the host: the Nth interface call made by plug-in code fails
// with a chosen error-slot code, registration of a chosen function id fails with a chosen host
// error, and Get(FilePath) fails with a chosen host error.
//
// Only calls made while plug-in code runs on the calling thread (a lifecycle message or a
// function call) are counted, so the host's own driver never consumes a fault.
#pragma once

#include <cstdint>

namespace fmwrapper::faults {

enum class CallFaultMode : int32_t {
    kFromNow = 0,           // one fault: the Nth counted call from the moment of arming
    kEachFunctionCall = 1,  // in every plug-in function call, its own Nth call
};

// n == 0 or code == 0 disarms.
void ArmCallFault(uint32_t n, int32_t code, CallFaultMode mode);
// Called on entry of every interface function; 0, or the code this call must report.
int32_t TakeCallFault();

// error == 0 removes the fault for that id.
void SetRegistrationFault(int16_t functionId, int16_t error);
int16_t RegistrationFault(int16_t functionId);

void SetFilePathFault(int16_t error);
int16_t FilePathFault();

void ClearAll();

// Marks the current thread as running plug-in code for the scope's lifetime.
class PluginCodeScope {
  public:
    PluginCodeScope();
    ~PluginCodeScope();
    PluginCodeScope(const PluginCodeScope&) = delete;
    PluginCodeScope& operator=(const PluginCodeScope&) = delete;
};

// One plug-in function call: its interface calls are counted from 1 (nested calls count on
// their own and the outer count resumes afterwards).
class FunctionCallScope {
  public:
    FunctionCallScope();
    ~FunctionCallScope();
    FunctionCallScope(const FunctionCallScope&) = delete;
    FunctionCallScope& operator=(const FunctionCallScope&) = delete;

  private:
    friend int32_t TakeCallFault();
    PluginCodeScope pluginCode_;
    uint32_t calls_ = 0;
    FunctionCallScope* outer_;
};

}  // namespace fmwrapper::faults
