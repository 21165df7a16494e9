#pragma once
// Copy, move and delete of whole trees by our own walk over "\\?\" paths, for the transfers the
// shell's file operation cannot hold: it keeps paths in fixed MAX_PATH buffers (under Wine an
// overlong one overwrites its stack) and refuses the long-path prefix. The results are the
// shell's: an existing folder is merged into, a same-named file inside it is replaced without
// asking, a move across volumes is a copy then a delete. The caller runs the checks first.

#include <cstddef>
#include <cstdint>
#include <string>

namespace slib {
namespace long_path {

// From this length on a path goes to the walk: the plain form of a folder path must stay below
// MAX_PATH - 12 (room for an 8.3 name), and the shell creates the folders of a tree in that form.
constexpr size_t kShellLimit = 248;

// The path the system is given: WithLongPathPrefix of an absolute path; a relative one is made
// absolute by the system first.
std::u16string LongForm(const std::u16string& path);

// getItemKind's answers (0 file, 1 folder, 2 none; -54 when it cannot tell) for a path of any
// length.
uint32_t KindOf(const std::u16string& path);

// The length of the longest path below `folder`, relative to it (its "\" included), or more than
// `enough` as soon as one that long is seen: the walk stops there.
size_t DeepestBelow(const std::u16string& folder, size_t enough);

// Where a copy or move lands: inside `destination` under the source's own name when it is an
// existing folder, else `destination` itself.
std::u16string TransferTarget(const std::u16string& source, const std::u16string& destination);

// Whether copying or moving `source` to `target` (or deleting `source`, when target is empty)
// touches a path of kShellLimit characters or more, the source's tree included.
bool NeedsWalk(const std::u16string& source, const std::u16string& target);

// The transfers themselves. Each throws slib::Exception with `message` and the system's last
// error of the step that failed; what was done before the failure stays done. A move on one
// volume is a rename; across volumes it is a copy that must complete before the source is
// deleted, and a failed copy takes away what it made at a new target. The caller refuses a
// transfer into the source's own tree first.
void CopyTree(const std::u16string& source, const std::u16string& target, const char* message);
void MoveTree(const std::u16string& source, const std::u16string& target, const char* message);
void DeleteTree(const std::u16string& path, const char* message);

}  // namespace long_path
}  // namespace slib
