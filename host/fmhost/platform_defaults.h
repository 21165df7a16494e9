// What fmhost assumes when the command line does not say: the application it stands in for is
// the desktop application on Windows and the server's script engine on Linux, where FileMaker
// only ever runs as a server.
#pragma once

#include <cstdint>

namespace fmhost::cli {

uint8_t DefaultApplicationKind();

}  // namespace fmhost::cli
