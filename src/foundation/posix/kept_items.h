#pragma once
// The items a delete or a move never takes, whatever name they are given: the root, a mount
// point, and the folder of the database with every folder holding it. Compared by identity, so
// a link, "..", or a bind mount is no way round.

#include <string>

namespace slib {

// Whether `path` is "/" or the root of a mounted file system. A link is not: removing it leaves
// what it leads to.
bool IsVolumeRoot(const std::string& path);

// Whether `path` (the item or what it leads to) names `folder` or one of the folders holding
// it; false when either cannot be opened.
bool IsOrHolds(const std::string& path, const std::string& folder);
// The same for the item itself, a link being only the link: what a delete or a move takes.
bool ItselfIsOrHolds(const std::string& path, const std::string& folder);

}  // namespace slib
