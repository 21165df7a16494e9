// Process-wide state of the shell, alive for as long as the library is loaded. Everything here
// except the mutex itself is read and written only while gCallMutex is held.
#pragma once

#include <cstdint>
#include <mutex>

#include "fmx_record.h"

namespace fmlib {

// The record of the most recent lifecycle message. Never cleared: function calls do not come
// through the entry point, so resource loads during a call take the module handle from here.
extern FmxExternCallRecord* gCallRecord;
// Serialises the entry point and every function handler: one message or call at a time.
extern std::mutex gCallMutex;
extern bool gEnabled;
extern bool gInPreferences;
// Id of the licence recheck timer (the system's timer id on Windows); 0 when none runs.
extern uintptr_t gRecheckTimer;

}  // namespace fmlib
