// This build starts no picture or rich-text engine (both fail at once with -4): nothing to give
// back.
#include "shell/system_engines.h"

namespace fmlib {

void ReleaseSystemEngines() {}

}  // namespace fmlib
