#pragma once
// Which item a path or handle really is: the volume's serial number and the item's file id, read
// from an open handle. Two paths name the same item exactly when their identities are equal,
// whatever their text (a subst drive, an 8.3 short name, a "\\?\" or UNC alias, a mount point).

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/windows/unique_handles.h"

namespace slib {

struct ItemIdentity {
    uint64_t volumeSerial = 0;
    uint8_t fileId[16] = {};  // FILE_ID_128; a 64-bit id fills the low 8 bytes

    bool operator==(const ItemIdentity& other) const;
    bool operator!=(const ItemIdentity& other) const { return !(*this == other); }
};

// The identity of an open item (any access, even none). Empty when the file system keeps no ids.
std::optional<ItemIdentity> IdentityOf(HANDLE item);

// Opens the item itself, never what a link points to (FILE_FLAG_OPEN_REPARSE_POINT), file or
// folder alike (FILE_FLAG_BACKUP_SEMANTICS), asking no access, so nobody is kept out. Invalid on
// failure, with GetLastError() set. `systemPath` is the form the system is given (long form).
UniqueFileHandle OpenItemItself(const std::u16string& systemPath, DWORD access = 0);

// As OpenItemItself, but a link is followed to what it leads to (a mount point to the root of
// its volume), as a program that opens the path by its name would.
UniqueFileHandle OpenItemFollowed(const std::u16string& systemPath, DWORD access = 0);

// IdentityOf(OpenItemItself(systemPath)); empty when it cannot be opened or has no id.
std::optional<ItemIdentity> IdentityOfPath(const std::u16string& systemPath);

// Every item `systemPath` answers to: the item itself and, when it is a link, what it leads to.
// Empty when nothing can be opened there.
std::vector<ItemIdentity> IdentitiesOfPath(const std::u16string& systemPath);

// Whether the listing's 64-bit file id (FILE_ID_BOTH_DIR_INFO) is the one of `identity`. A
// listing that gives no id (0) matches anything.
bool MatchesListedId(const ItemIdentity& identity, int64_t listedId);

// Whether the open item's delete is pending: it is gone for good once the last handle to it
// closes, and no one can open it meanwhile.
bool IsDeletePending(HANDLE item);

// Whether nothing answers to `systemPath` any more: no item there, or one whose delete is pending
// (opening it fails with STATUS_DELETE_PENDING, or its handle says so).
bool IsGoneOrDeletePending(const std::u16string& systemPath);

// Whether the open item is known under one name only (a folder, or a file without hard links).
bool HasSingleName(HANDLE item);

// Where the open item really is, in the "\\?\" form (a subst drive, a short name and a link
// resolved); empty when the system cannot say.
std::u16string FinalPathOf(HANDLE item);

}  // namespace slib
