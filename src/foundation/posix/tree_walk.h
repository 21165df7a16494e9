#pragma once
// Whole trees walked by descriptor: every step is openat/fstatat/unlinkat relative to a folder
// already open, and every folder is entered with O_NOFOLLOW|O_DIRECTORY. A link inside a tree is
// never followed: it counts nothing, is removed as the link and is copied as a link. A folder
// swapped for a link between the check and the act is never entered. A mount point inside a tree
// is never entered either: its removal fails on it, the mounted files untouched.
//
// Each function throws slib::Exception with `message` and the errno of the step that failed;
// what was done before stays done.

#include <cstdint>
#include <string>

#include "foundation/posix/unique_fds.h"

namespace slib {

// Opens a folder by a path the user named (links on the way are followed, as its name says).
// Invalid, with errno set, on failure.
UniqueFd OpenFolder(const std::string& path);

// The total size of the files below an open folder; unreadable parts count 0.
uint64_t TreeSize(int folder);

// Removes `name` in `folder` and, for a folder, all it holds.
void RemoveEntry(int folder, const std::string& name, const char* message);

// Copies `name` in `from` to the new name `to` in `into`, each file written and fsync'ed whole,
// modes and modification times kept. `followTop` follows `name` itself when it is a link (the
// item the user named); links below are copied as links. Devices, sockets and pipes are refused
// (-50): reading one could block or never end.
void CopyEntry(int from, const std::string& name, int into, const std::string& to, bool followTop,
               const char* message);

// Renames `name` in `from` to `to` in `into`, merging folders into an existing folder of that name
// (a same-named file inside is replaced), as the Windows shell does.
void PlaceEntry(int from, const std::string& name, int into, const std::string& to,
                const char* message);

}  // namespace slib
