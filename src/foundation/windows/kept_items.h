#pragma once
// The items a delete or a move never takes, whatever name they are given: a volume's root, and
// the folder of the database (with every folder holding it). Both compare what the items are
// (ItemIdentity), so a subst drive, a short name, a "\\?\" or UNC form or a link is no way round.

#include <string>

namespace slib {

// Whether `path` (any form) is a volume root: a drive, share or volume root as written, or an
// item that is the root of its volume (a mount point's volume, a subst drive of a root, ...).
bool IsVolumeRoot(const std::u16string& path);

// Whether `path` names `folder` or one of the folders holding it; false when either cannot be
// opened.
bool IsOrHolds(const std::u16string& path, const std::u16string& folder);

}  // namespace slib
