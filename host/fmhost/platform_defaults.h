// What fmhost assumes when the command line does not say: the application it stands in for is
// the desktop application on Windows and the server's script engine on Linux, where FileMaker
// only ever runs as a server.
#pragma once

#include <cstdint>

namespace fmhost::cli {

uint8_t DefaultApplicationKind();
// The version text sent at init and given by Get(ApplicationVersion): FileMaker Pro's on Windows,
// FileMaker Server's on Linux, whichever of the server's engines the application kind names.
const char16_t* DefaultApplicationVersion();

}  // namespace fmhost::cli
