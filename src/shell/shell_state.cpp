#include "shell/shell_state.h"

namespace fmlib {

FmxExternCallRecord* gCallRecord = nullptr;
std::mutex gCallMutex;
bool gEnabled = false;
bool gInPreferences = false;
uintptr_t gRecheckTimer = 0;

}  // namespace fmlib
