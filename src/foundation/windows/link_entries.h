#pragma once
// Which items our own walks treat as links: a junction, a symbolic link, a mount point (under
// Wine, a Unix symbolic link). A walk never enters one, so it cannot leave the tree it was given,
// count or copy what lies elsewhere, or loop. Other reparse points (cloud placeholders,
// deduplicated files) hold the item's own data and are ordinary items.

// windows.h first: the other system headers build on its types.
#include <windows.h>

namespace slib {

// From a find record: `tag` is its dwReserved0, the reparse tag. A reparse point whose tag is
// not given (0, which no real tag is) counts as a link: entering it is the risk.
inline bool IsLinkEntry(DWORD attributes, DWORD tag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (tag == 0 || IsReparseTagNameSurrogate(tag));
}

inline bool IsLinkEntry(const WIN32_FIND_DATAW& found) {
    return IsLinkEntry(found.dwFileAttributes, found.dwReserved0);
}

}  // namespace slib
