// Host path syntax to native text: "file:/C:/Data/a.txt" becomes "C:\Data\a.txt" on Windows,
// "filelinux:/opt/Data/a.txt" becomes "/opt/Data/a.txt" on Linux.
#pragma once

#include <string>

#include "fmx_functions.h"

namespace bridge {

// The system's form of a host path (HostSyntaxToNative); anything else comes back unchanged, to
// be read as a native or relative path.
// Raises -50 "FileMaker network path cannot be used" for "fmnet:..." and -43 "Empty string is
// not valid path" for an empty text.
std::u16string HostPathToNative(const std::u16string& hostPath);
std::u16string HostPathToNative(const FmxText& hostPath);

}  // namespace bridge
