// Host path syntax to native Windows text: "file:/C:/Data/a.txt" becomes "C:\Data\a.txt".
#pragma once

#include <string>

#include "fmx_functions.h"

namespace bridge {

// The text after the host's prefix ("file:", "filemac:", anything before the first "/") when
// the segment between the first two "/" names a mounted volume, with "/" turned into "\".
// Anything else comes back unchanged, to be read as a native or relative path.
// Raises -50 "FileMaker network path cannot be used" for "fmnet:..." and -43 "Empty string is
// not valid path" for an empty text.
std::u16string HostPathToNative(const std::u16string& hostPath);
std::u16string HostPathToNative(const FmxText& hostPath);

}  // namespace bridge
