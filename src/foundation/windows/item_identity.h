#pragma once
// Which item a path or handle really is: the volume's serial number and the item's file id, read
// from an open handle. Two paths name the same item exactly when their identities are equal,
// whatever their text (a subst drive, an 8.3 short name, a "\\?\" or UNC alias, a mount point).

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

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

// IdentityOf(OpenItemItself(systemPath)); empty when it cannot be opened or has no id.
std::optional<ItemIdentity> IdentityOfPath(const std::u16string& systemPath);

}  // namespace slib
