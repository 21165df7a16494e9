// The system engines the plug-in starts on first use (picture and rich-text libraries), given
// back when the host shuts the plug-in down.
#pragma once

namespace fmlib {

// Idempotent; an engine not started is left alone.
void ReleaseSystemEngines();

}  // namespace fmlib
