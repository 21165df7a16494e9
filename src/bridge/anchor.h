// The anchor: the folder relative paths are resolved against, found anew on every call because
// the calculating database can change between calls.
#pragma once

#include <string>

#include "fmx_functions.h"
#include "foundation/path.h"

namespace bridge {

// The host's error for a calculation that has no database file behind it.
constexpr FmxErrcode kNoDatabaseFile = 100;

// The folder of the calculating database as a native path, from "Get(filePath)":
//   - a database opened from a network host ("fmnet:...") anchors at "Get(FileMakerPath)", the
//     folder of the host application;
//   - no database file (host error 100) anchors at the process's current directory;
//   - a file path without any "/" gives slib::Path::kDefaultAnchor, against which relative paths
//     are refused;
//   - any other host error (of either calculation) raises that error number with "Unexpected
//     FileMaker Error".
slib::Path ResolveAnchor(const FmxExprEnv& env);

// `filePath` up to and including its last "/" (the database's own name dropped), or
// kDefaultAnchor when that leaves nothing.
std::u16string AnchorTextOfFilePath(const std::u16string& filePath);

}  // namespace bridge
