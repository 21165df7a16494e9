#pragma once
// Acting on items through handles: a folder's entries read from the open folder, each child
// opened inside that open folder (never again by a path that a swap could redirect), and renames
// and deletes made on the handle of the item that was checked.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/windows/unique_handles.h"

namespace slib {

struct ListedEntry {
    std::u16string name;
    DWORD attributes;
    DWORD reparseTag;  // 0 when the listing gives none
    int64_t fileId;    // 0 when the listing gives none
};

// The entries of the open folder (opened with FILE_LIST_DIRECTORY), "." and ".." left out.
// False with GetLastError() set when it cannot be read to the end.
bool ListOpenFolder(HANDLE folder, std::vector<ListedEntry>& entries);

// How OpenChild treats the name.
enum class ChildOpen {
    kExisting,        // the item must be there
    kFolderOrCreate,  // an existing item, or a new folder
};

// The native open behind OpenChild: `name` inside `folder`, or an NT path ("\\??\\C:\\...") when
// `folder` is null. Returns the system's own status (negative on failure), which tells apart
// failures that GetLastError() merges (a pending delete and a refusal are both access denied).
long OpenNative(HANDLE folder, const std::u16string& name, DWORD access, ChildOpen how,
                UniqueFileHandle& item);

// Opens `name`, one name inside the open `folder`, as the item itself (a link is not followed),
// sharing everything with others. Invalid with GetLastError() set on failure.
UniqueFileHandle OpenChild(HANDLE folder, const std::u16string& name, DWORD access,
                           ChildOpen how = ChildOpen::kExisting);

// A second handle to the open item with `access` and `flags` (ReOpenFile), sharing everything, and
// never another item: Wine reopens the name the first was opened by, which may name another item
// by now. Invalid with GetLastError() set on failure, ERROR_CANT_ACCESS_FILE for another item.
UniqueFileHandle ReopenItem(HANDLE item, DWORD access, DWORD flags);

// The attributes and reparse tag the open item has now.
bool AttributesOfOpen(HANDLE item, DWORD& attributes, DWORD& reparseTag);

// What an item to be renamed or deleted through its handle is opened with, and no more: a user who
// may delete an item but not change its attributes can still remove it, and a read-only file can
// be opened where the system refuses write access of any kind to it.
constexpr DWORD kRemovalAccess = DELETE | FILE_READ_ATTRIBUTES;

// Renames the open item (opened with DELETE) to `systemTarget`, a full path in long form.
bool RenameOpenItem(HANDLE item, const std::u16string& systemTarget, bool replaceExisting);

// Deletes the open item (opened with kRemovalAccess): it is gone when the last handle to it
// closes. A read-only item is deleted too, as the shell does; its mark stays when the delete still
// fails. A folder must be empty.
bool DeleteOpenItem(HANDLE item);

}  // namespace slib
