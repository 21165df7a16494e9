#pragma once
// Which items our own walks treat as links: a junction, a symbolic link, a mount point (under
// Wine, a Unix symbolic link). A walk never enters one, so it cannot leave the tree it was given,
// count or copy what lies elsewhere, or loop. Other reparse points (cloud placeholders,
// deduplicated files) hold the item's own data and are ordinary items.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <string>

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

// From the item at `systemPath` opened itself (FILE_FLAG_OPEN_REPARSE_POINT) as `item`: its own
// reparse tag says. Some systems follow a link even so (Wine, its Unix links): then the path's
// attributes still show a reparse point, or the item opened lies in another folder than the one
// its name gives, and it counts as a link too.
bool IsLinkItem(HANDLE item, const std::u16string& systemPath);

// Where the item at `systemPath` really lies ("\\?\" form) when a link there, or above it,
// leads to another folder; empty when it lies where its name says, or nothing is there.
std::u16string WhereLinkLeads(const std::u16string& systemPath);

}  // namespace slib
