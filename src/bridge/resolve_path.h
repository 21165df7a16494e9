// Host path text to a native path: host syntax first (HostPathToNative), then the native forms
// of slib::Path::Parse against the anchor.
#pragma once

#include <memory>

#include "fmx_functions.h"
#include "foundation/path.h"
#include "foundation/utf16_string.h"

namespace bridge {

// The native path the file manager works on.
std::shared_ptr<slib::Path> ResolvePath(const slib::Path& anchor, const FmxText& hostPath);

// The resolved path as result text in one of the slib::PathStyle forms. The relative styles give
// the text below the anchor; a path elsewhere keeps its full form in that style's separators.
std::shared_ptr<const slib::String> ResolvePath(const slib::Path& anchor, const FmxText& hostPath,
                                                int style);

}  // namespace bridge
