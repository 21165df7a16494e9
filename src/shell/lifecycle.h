// What the entry point does for each lifecycle message; called with gCallMutex held and
// gCallRecord set.
#pragma once

#include "fmx_record.h"
#include "shell/function_entry.h"

namespace fmlib {

// Answers 55, -1 (unsupported extension version) or -2 (registration failed; what was
// registered has been withdrawn and the timer stopped) in the record's result.
void HandleInit(FmxExternCallRecord& record, const FunctionTable& functions);
void HandleShutdown(const FunctionTable& functions);
// Opens the about window unless it is already open.
void HandlePreferences();
// 128 name, 129 description, 131 options; any other id leaves the buffer untouched.
void HandleGetString(FmxExternCallRecord& record);

}  // namespace fmlib
