// The long-path walk behind copy, move and delete when the shell cannot take the paths, and
// behind every move of a folder. It works on handles: each folder is listed from its open handle
// and each entry opened inside it as the item itself, checked to be the item listed, then acted
// on through that handle, so a folder swapped for a link meanwhile is never entered.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/item_name_rules.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/item_identity.h"
#include "foundation/windows/link_entries.h"
#include "foundation/windows/long_path_walk.h"
#include "foundation/windows/open_file_copy.h"
#include "foundation/windows/open_items.h"

namespace slib {
namespace long_path {

using file_manager_detail::Wide;

namespace {

// A tree this deep is a folder link looping back on itself, not a real tree; the cap keeps the
// recursion's stack small whatever the links do.
constexpr int kMaxDepth = 1000;

// What each walk opens an item with: enough to list a folder and to read its kind and its id, and
// for removals to rename or delete it.
constexpr DWORD kLook = FILE_READ_ATTRIBUTES;
constexpr DWORD kRemove = kRemovalAccess;

// The item the tree changed under us: what was listed is not what was opened.
constexpr DWORD kChangedMeanwhile = ERROR_CANT_ACCESS_FILE;

// One item of a walk, open: what its folder's listing said it is and what its handle says.
struct OpenItem {
    UniqueFileHandle handle;
    std::u16string path;  // long form, for the calls that only take a path
    bool folder = false;  // a folder we may enter: no link, by the listing and by the handle
    bool link = false;
    // A link the system opened as what it points at (Wine's Unix links): not the item listed.
    bool linkNotHeld = false;
};

DWORD FolderAccess(DWORD access) {
    return access | FILE_LIST_DIRECTORY;
}

void CheckDepth(int depth, const char* message) {
    if (depth > kMaxDepth) {
        ThrowLastError(message, ERROR_FILENAME_EXCED_RANGE);
    }
}

// Fills the kinds from the listing's record and the open handle: a link by either is a link.
void Classify(OpenItem& item, DWORD listedAttributes, DWORD listedTag, const char* message) {
    DWORD attributes = 0;
    DWORD tag = 0;
    if (!AttributesOfOpen(item.handle.get(), attributes, tag)) {
        ThrowLastError(message, GetLastError());
    }
    const bool heldAsLink = IsLinkEntry(attributes, tag);
    item.link = heldAsLink || IsLinkEntry(listedAttributes, listedTag);
    item.linkNotHeld = item.link && !heldAsLink;
    item.folder = !item.link && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Opens an entry of the open folder `parent` inside it and makes sure it is the item listed.
OpenItem OpenListed(const OpenItem& parent, const ListedEntry& entry, DWORD access,
                    const char* message) {
    OpenItem child;
    child.path = parent.path + u"\\" + entry.name;
    const bool folder = (entry.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
                        !IsLinkEntry(entry.attributes, entry.reparseTag);
    if (!RetryWhileBusy(child.path, [&] {
            child.handle =
                OpenChild(parent.handle.get(), entry.name, folder ? FolderAccess(access) : access);
            return child.handle.valid();
        })) {
        ThrowLastError(message, GetLastError());
    }
    const std::optional<ItemIdentity> identity = IdentityOf(child.handle.get());
    if (!identity || !MatchesListedId(*identity, entry.fileId)) {
        ThrowLastError(message, kChangedMeanwhile);
    }
    Classify(child, entry.attributes, entry.reparseTag, message);
    if (folder != child.folder) {
        ThrowLastError(message, kChangedMeanwhile);
    }
    return child;
}

// Opens the item a walk starts from, itself. Its own find record stands for the listing (a root
// has none); `follow` opens what a link leads to instead, for a copy of a link named in the call.
OpenItem OpenTop(const std::u16string& longPath, DWORD access, bool follow, const char* message) {
    DWORD listedAttributes = 0;
    DWORD listedTag = 0;
    WIN32_FIND_DATAW found;
    const UniqueFindHandle search(FindFirstFileW(Wide(longPath), &found));
    if (search.valid()) {
        listedAttributes = found.dwFileAttributes;
        listedTag = found.dwReserved0;
    }
    const bool folder = search.valid() ? (listedAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0
                                       : KindOf(longPath) == ItemKind::kFolder;
    OpenItem top;
    top.path = longPath;
    const DWORD wanted = folder ? FolderAccess(access) : access;
    if (!RetryWhileBusy(longPath, [&] {
            top.handle =
                follow ? OpenItemFollowed(longPath, wanted) : OpenItemItself(longPath, wanted);
            return top.handle.valid();
        })) {
        ThrowLastError(message, GetLastError());
    }
    if (follow) {
        listedAttributes &= ~FILE_ATTRIBUTE_REPARSE_POINT;
    }
    Classify(top, listedAttributes, listedTag, message);
    return top;
}

std::vector<ListedEntry> Entries(const OpenItem& folder, const char* message) {
    std::vector<ListedEntry> entries;
    if (!ListOpenFolder(folder.handle.get(), entries)) {
        ThrowLastError(message, GetLastError());
    }
    return entries;
}

DWORD AttributesOf(const std::u16string& longPath) {
    return GetFileAttributesW(Wide(longPath));
}

// The shell replaces read-only and hidden items without asking; the system refuses to replace a
// hidden or read-only file.
void MakeReplaceable(const std::u16string& longPath) {
    const DWORD refused = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    const DWORD attributes = AttributesOf(longPath);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & refused) != 0) {
        SetFileAttributesW(Wide(longPath), attributes & ~refused);
    }
}

// The bytes come from the open file the walk checked, not from its path.
void CopyFileOver(const OpenItem& from, const std::u16string& to, const char* message) {
    MakeReplaceable(to);
    if (!RetryWhileBusy(from.path, [&] { return CopyOpenFile(from.handle.get(), to); })) {
        ThrowLastError(message, GetLastError());
    }
}

// The folder a copy writes into, opened: the one named in the call (made when missing; it may be
// a link the caller chose), or one inside a folder we opened, which must be a real folder.
OpenItem OpenTargetFolder(const OpenItem* parent, const std::u16string& name,
                          const std::u16string& path, const char* message) {
    OpenItem target;
    target.path = path;
    if (parent == nullptr) {
        if (!CreateDirectoryW(Wide(path), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
            ThrowLastError(message, GetLastError());
        }
        target.handle = OpenItemFollowed(path, FolderAccess(kLook));
    } else {
        target.handle =
            OpenChild(parent->handle.get(), name, FolderAccess(kLook), ChildOpen::kFolderOrCreate);
    }
    if (!target.handle.valid()) {
        ThrowLastError(message, GetLastError());
    }
    Classify(target, 0, 0, message);
    if (!target.folder) {
        // A file, or below the named target a link: never written through.
        ThrowLastError(message, target.link ? ERROR_CANT_ACCESS_FILE : ERROR_ALREADY_EXISTS);
    }
    return target;
}

// Copies the open item to `to`; a link below the item copied is left out: neither the link nor
// what it points at is copied.
void CopyOpen(const OpenItem& from, const OpenItem* toParent, const std::u16string& toName,
              const std::u16string& to, int depth, const char* message) {
    CheckDepth(depth, message);
    if (!from.folder) {
        CopyFileOver(from, to, message);
        return;
    }
    const OpenItem target = OpenTargetFolder(toParent, toName, to, message);
    for (const ListedEntry& entry : Entries(from, message)) {
        if (IsLinkEntry(entry.attributes, entry.reparseTag)) {
            continue;
        }
        const OpenItem child = OpenListed(from, entry, kLook, message);
        if (!child.link) {
            CopyOpen(child, &target, entry.name, to + u"\\" + entry.name, depth + 1, message);
        }
    }
}

// Deletes the open item (opened for removal) and everything in it; a link goes, never what it
// points to.
void DeleteOpen(const OpenItem& item, int depth, const char* message) {
    CheckDepth(depth, message);
    if (item.folder) {
        for (const ListedEntry& entry : Entries(item, message)) {
            DeleteOpen(OpenListed(item, entry, kRemove, message), depth + 1, message);
        }
    }
    if (item.linkNotHeld) {
        // Deleting this handle would delete what the link points at.
        ThrowLastError(message, ERROR_CANT_ACCESS_FILE);
    }
    if (!RetryWhileBusy(item.path, [&] { return DeleteOpenItem(item.handle.get()); })) {
        ThrowLastError(message, GetLastError());
    }
}

// Deletes the links found in the open folder's tree, nothing else.
void DeleteLinksIn(const OpenItem& folder, int depth, const char* message) {
    CheckDepth(depth, message);
    if (!folder.folder) {
        return;
    }
    for (const ListedEntry& entry : Entries(folder, message)) {
        const bool link = IsLinkEntry(entry.attributes, entry.reparseTag);
        if (link || (entry.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            const OpenItem child = OpenListed(folder, entry, link ? kRemove : kLook, message);
            if (child.link) {
                DeleteOpen(child, depth + 1, message);
            } else {
                DeleteLinksIn(child, depth + 1, message);
            }
        }
    }
}

// Removes what a failed move made at its target; a failure to do so changes nothing reported.
void RemoveQuietly(const std::u16string& longPath, const char* message) {
    try {
        DeleteOpen(OpenTop(longPath, kRemove, false, message), 0, message);
    } catch (const Exception&) {
    }
}

// Across volumes: a copy that must be complete before the source goes. A failed copy takes away
// what it made at a new target, so a failed move leaves nothing there.
void MoveAcross(const OpenItem& from, const std::u16string& to, int depth, const char* message) {
    if (from.link) {
        // A link cannot travel to another volume: inside the tree it goes with its source, as a
        // copy leaves it out; the one the caller named stays, refused.
        if (depth == 0) {
            ThrowLastError(message, ERROR_NOT_SAME_DEVICE);
        }
        DeleteOpen(from, depth, message);
        return;
    }
    const bool targetWasThere = AttributesOf(to) != INVALID_FILE_ATTRIBUTES;
    try {
        CopyOpen(from, nullptr, u"", to, depth, message);
        // The links, which do not travel, go first: a system that cannot remove one fails the move
        // while the source is still whole, and the copy can go again.
        DeleteLinksIn(from, depth, message);
    } catch (const Exception&) {
        if (!targetWasThere) {
            RemoveQuietly(to, message);
        }
        throw;
    }
    DeleteOpen(from, depth, message);
}

void MoveOpen(const OpenItem& from, const std::u16string& to, int depth, const char* message);

// Moves each entry of the open folder `from` into the folder `to`, then removes `from`, empty by
// then.
void MoveContents(const OpenItem& from, const std::u16string& to, int depth, const char* message) {
    for (const ListedEntry& entry : Entries(from, message)) {
        MoveOpen(OpenListed(from, entry, kRemove, message), to + u"\\" + entry.name, depth + 1,
                 message);
    }
    if (!DeleteOpenItem(from.handle.get())) {
        ThrowLastError(message, GetLastError());
    }
}

bool IsRealFolder(const std::u16string& longPath) {
    const DWORD attributes = AttributesOf(longPath);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
           (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

bool Rename(const OpenItem& from, const std::u16string& to) {
    if (from.linkNotHeld) {
        // The handle holds what the link points at; the link itself is reached by its name.
        return MoveFileExW(Wide(from.path), Wide(to), 0) != 0;
    }
    return RenameOpenItem(from.handle.get(), to, !from.folder);
}

void MoveOpen(const OpenItem& from, const std::u16string& to, int depth, const char* message) {
    CheckDepth(depth, message);
    if (from.folder && IsRealFolder(to)) {
        MoveContents(from, to, depth, message);
        return;
    }
    if (!from.folder) {
        MakeReplaceable(to);
    }
    if (RetryWhileBusy(from.path, [&] { return Rename(from, to); })) {
        return;
    }
    const DWORD error = GetLastError();
    if (error != ERROR_NOT_SAME_DEVICE) {
        ThrowLastError(message, error);
    }
    MoveAcross(from, to, depth, message);
}

std::u16string WithoutTrailingSeparators(std::u16string path) {
    while (path.size() > 1 && path.back() == u'\\') {
        path.pop_back();
    }
    return path;
}

}  // namespace

std::u16string LongForm(const std::u16string& path) {
    if (IsAbsolutePath(NormalizePath(path))) {
        return WithLongPathPrefix(path);
    }
    std::vector<wchar_t> buffer(path.size() + MAX_PATH);
    DWORD length =
        GetFullPathNameW(Wide(path), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    if (length >= buffer.size()) {
        buffer.resize(length + 1);
        length =
            GetFullPathNameW(Wide(path), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    }
    if (length == 0 || length >= buffer.size()) {
        return WithLongPathPrefix(path);
    }
    std::u16string full(reinterpret_cast<const char16_t*>(buffer.data()), length);
    // A trailing separator would double the one the walk puts before each entry; a root keeps it.
    while (full.size() > 3 && full.back() == u'\\') {
        full.pop_back();
    }
    if (full.rfind(u"\\\\?\\", 0) == 0 || full.rfind(u"\\\\.\\", 0) == 0) {
        return full;
    }
    if (full.rfind(u"\\\\", 0) == 0) {
        return u"\\\\?\\UNC\\" + full.substr(2);
    }
    return WithLongPathPrefix(full);
}

uint32_t KindOf(const std::u16string& path) {
    return file_manager_detail::QueryItemKind(Wide(LongForm(path)));
}

namespace {

size_t DeepestBelowLong(const std::u16string& longFolder, size_t enough, int depth) {
    size_t deepest = 0;
    WIN32_FIND_DATAW found;
    const UniqueFindHandle search(FindFirstFileW(Wide(longFolder + u"\\*"), &found));
    if (!search.valid()) {
        return 0;
    }
    do {
        const std::u16string name = reinterpret_cast<const char16_t*>(found.cFileName);
        if (name == u"." || name == u"..") {
            continue;
        }
        size_t length = name.size() + 1;
        const bool folder =
            (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !IsLinkEntry(found);
        if (length <= enough && folder && depth < kMaxDepth) {
            length += DeepestBelowLong(longFolder + u"\\" + name, enough - length, depth + 1);
        }
        deepest = std::max(deepest, length);
        if (deepest > enough || (folder && depth >= kMaxDepth)) {
            return enough + 1;
        }
    } while (FindNextFileW(search.get(), &found));
    return deepest;
}

}  // namespace

size_t DeepestBelow(const std::u16string& folder, size_t enough) {
    return DeepestBelowLong(LongForm(folder), enough, 0);
}

std::u16string TransferTarget(const std::u16string& source, const std::u16string& destination) {
    if (KindOf(destination) != ItemKind::kFolder) {
        return destination;
    }
    const std::u16string trimmed = WithoutTrailingSeparators(source);
    const size_t separator = trimmed.rfind(u'\\');
    const std::u16string name =
        separator == std::u16string::npos ? trimmed : trimmed.substr(separator + 1);
    return WithoutTrailingSeparators(destination) + u"\\" + name;
}

bool NeedsWalk(const std::u16string& source, const std::u16string& target) {
    const size_t longest = std::max(source.size(), target.size());
    // The shell would strip a trailing dot or open a device instead of an item others named so.
    if (longest >= kShellLimit || FindUnusableComponent(source) || FindUnusableComponent(target)) {
        return true;
    }
    if (KindOf(source) != ItemKind::kFolder) {
        return false;
    }
    return longest + DeepestBelow(source, kShellLimit - longest) >= kShellLimit;
}

void CopyTree(const std::u16string& source, const std::u16string& target, const char* message) {
    // The item named in the call is copied as what it leads to.
    const OpenItem from = OpenTop(LongForm(source), kLook, true, message);
    CopyOpen(from, nullptr, u"", LongForm(target), 0, message);
}

void MoveTree(const std::u16string& source, const std::u16string& target, const char* message) {
    MoveOpen(OpenTop(LongForm(source), kRemove, false, message), LongForm(target), 0, message);
}

void DeleteTree(const std::u16string& path, const char* message) {
    DeleteOpen(OpenTop(LongForm(path), kRemove, false, message), 0, message);
}

}  // namespace long_path
}  // namespace slib
