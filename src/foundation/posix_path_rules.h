#pragma once
// The path text rules of a Linux build, beside slib::Path's Windows ones: only "/" separates,
// names keep their case, and there are no drives, shares or short names. Text only, so they are
// tested on every system.

#include <string>
#include <string_view>

#include "foundation/path.h"
#include "foundation/path_system.h"

namespace slib {

// "." components go; ".." removes the component before it and, where there is none (at "/" or
// the start of a relative path), is dropped; runs of "/" fold into one; a trailing "/" goes,
// except the root's own.
std::u16string NormalizePosixPath(std::u16string_view path);

// Resolves user text against `anchor`:
//   "~..."        the home folder followed by the rest
//   "file://..."  the URL form: "file:///opt/a" is "/opt/a"
//   "/..."        absolute: taken as it is
//   anything else relative ("." included): below the anchor; its ".." never climbs out.
// A relative path against Path::kDefaultAnchor throws -50 "Relative paths are not supported in
// Webdirect.".
std::u16string ParsePosixPath(const std::u16string& text, const Path& anchor,
                              const PathSystem& system);

// The path in a PathStyle form: kUrl "file:///opt/a", kHost "filelinux:/opt/a" (a folder ends
// with "/"), any other the path itself; with kRelative, "." for the anchor, the text below it for
// paths inside it and the full form otherwise.
std::u16string FormatPosixPath(const std::u16string& path, int style, const Path& anchor,
                               const PathSystem& system);

}  // namespace slib
