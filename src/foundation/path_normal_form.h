#pragma once
// The one textual form every path takes before it reaches the system. With the "\\?\" prefix the
// system does no normalisation of its own, and without it paths past MAX_PATH fail, so we do the
// normalisation here and always hand over the prefixed form where a call takes one.

#include <cstddef>
#include <string>
#include <string_view>

namespace slib {

enum class PathRootKind {
    kRelative,       // "a\b": no root at all
    kRooted,         // "\a": the root of some drive or share, not said which
    kDriveRelative,  // "C:a": relative to the current folder of drive C:
    kDrive,          // "C:\a"
    kUnc,            // "\\server\share\a"
    kDevice,         // "\\?\Volume{...}\a" and other prefixed names that are no drive or share
};

struct PathRoot {
    PathRootKind kind;
    size_t length;  // of the root text in the normal form: "C:\", "\\server\share\", "\", "C:", ""
};

// The plain normal form:
//   - "/" becomes "\"; runs of separators fold into one;
//   - "\\?\C:\x", "\\.\C:\x" become "C:\x" and "\\?\UNC\server\share\x" becomes
//     "\\server\share\x"; "//server/share" is UNC like "\\server\share";
//   - "." components go; ".." removes the component before it and, where there is none (at the
//     drive root, the share, or the start of a relative path), is dropped;
//   - trailing separators go, except the root's own ("C:\", "\\server\share\", "\");
//   - names are otherwise kept exactly, trailing dots and spaces included, so an item that
//     another tool gave such a name can still be reached.
std::u16string NormalizePath(std::u16string_view path);

// The root of a path in normal form.
PathRoot PathRootOf(std::u16string_view normalized);

bool IsAbsolutePath(std::u16string_view normalized);

// What every system call that takes a path is given: the normal form with "\\?\" in front of a
// drive path and "\\?\UNC\" in place of the leading "\\" of a UNC path. A path that is not
// absolute (relative, "\x", "C:x") cannot take the prefix and comes back in plain normal form.
std::u16string WithLongPathPrefix(const std::u16string& path);

}  // namespace slib
