// The long-path walk behind copy, move and delete when the shell cannot take the paths.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <algorithm>
#include <vector>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/item_name_rules.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/link_entries.h"
#include "foundation/windows/long_path_walk.h"

namespace slib {
namespace long_path {

using file_manager_detail::Wide;

namespace {

// A tree this deep is a folder link looping back on itself, not a real tree; the cap keeps the
// recursion's stack small whatever the links do.
constexpr int kMaxDepth = 1000;

struct Entry {
    std::u16string name;
    DWORD attributes;
    DWORD reparseTag;
    bool isFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    bool isLink() const { return IsLinkEntry(attributes, reparseTag); }
};

// The folder's entries, read in full before anything below it changes.
std::vector<Entry> ListFolder(const std::u16string& longFolder, const char* message) {
    std::vector<Entry> entries;
    WIN32_FIND_DATAW found;
    const UniqueFindHandle search(FindFirstFileW(Wide(longFolder + u"\\*"), &found));
    if (!search.valid()) {
        const DWORD error = GetLastError();
        if (error == ERROR_FILE_NOT_FOUND || error == ERROR_NO_MORE_FILES) {
            return entries;
        }
        ThrowLastError(message, error);
    }
    do {
        const std::u16string name = reinterpret_cast<const char16_t*>(found.cFileName);
        if (name != u"." && name != u"..") {
            entries.push_back(Entry{name, found.dwFileAttributes, found.dwReserved0});
        }
    } while (FindNextFileW(search.get(), &found));
    const DWORD error = GetLastError();
    if (error != ERROR_NO_MORE_FILES) {
        ThrowLastError(message, error);
    }
    return entries;
}

DWORD AttributesOf(const std::u16string& longPath) {
    return GetFileAttributesW(Wide(longPath));
}

bool IsFolder(const std::u16string& longPath) {
    const DWORD attributes = AttributesOf(longPath);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The shell replaces and removes read-only and hidden items without asking; the system calls
// refuse them (CopyFileExW a hidden or read-only target, the removals a read-only item).
void MakeReplaceable(const std::u16string& longPath) {
    const DWORD refused = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    const DWORD attributes = AttributesOf(longPath);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & refused) != 0) {
        SetFileAttributesW(Wide(longPath), attributes & ~refused);
    }
}

void CheckDepth(int depth, const char* message) {
    if (depth > kMaxDepth) {
        ThrowLastError(message, ERROR_FILENAME_EXCED_RANGE);
    }
}

// Creates `to` unless a folder is there already (then the copy merges into it).
void MakeFolder(const std::u16string& to, const char* message) {
    if (!CreateDirectoryW(Wide(to), nullptr)) {
        const DWORD error = GetLastError();
        if (error != ERROR_ALREADY_EXISTS || !IsFolder(to)) {
            ThrowLastError(message, error);
        }
    }
}

void CopyFileOver(const std::u16string& from, const std::u16string& to, const char* message) {
    MakeReplaceable(to);
    if (!RetryWhileBusy(from, [&] {
            return CopyFileExW(Wide(from), Wide(to), nullptr, nullptr, nullptr, 0) != 0;
        })) {
        ThrowLastError(message, GetLastError());
    }
}

void RemoveFolder(const std::u16string& path, const char* message) {
    MakeReplaceable(path);
    if (!RemoveDirectoryW(Wide(path))) {
        ThrowLastError(message, GetLastError());
    }
}

void RemoveFile(const std::u16string& path, const char* message) {
    MakeReplaceable(path);
    if (!RetryWhileBusy(path, [&] { return DeleteFileW(Wide(path)) != 0; })) {
        ThrowLastError(message, GetLastError());
    }
}

// A link below the item copied is left out: neither the link nor what it points at is copied.
void CopyEntry(const std::u16string& from, const std::u16string& to, const Entry& entry, int depth,
               const char* message) {
    CheckDepth(depth, message);
    if (depth > 0 && entry.isLink()) {
        return;
    }
    if (!entry.isFolder()) {
        CopyFileOver(from, to, message);
        return;
    }
    MakeFolder(to, message);
    for (const Entry& child : ListFolder(from, message)) {
        CopyEntry(from + u"\\" + child.name, to + u"\\" + child.name, child, depth + 1, message);
    }
}

void DeleteEntry(const std::u16string& path, const Entry& entry, int depth, const char* message) {
    CheckDepth(depth, message);
    if (!entry.isFolder()) {
        RemoveFile(path, message);
        return;
    }
    // A link goes, never what it points to.
    if (!entry.isLink()) {
        for (const Entry& child : ListFolder(path, message)) {
            DeleteEntry(path + u"\\" + child.name, child, depth + 1, message);
        }
    }
    RemoveFolder(path, message);
}

// Moves each entry of `from` into the folder `to`, then removes `from`, which is empty by then.
void MoveContents(const std::u16string& from, const std::u16string& to, int depth,
                  const char* message);

void MoveEntry(const std::u16string& from, const std::u16string& to, const Entry& entry, int depth,
               const char* message) {
    CheckDepth(depth, message);
    if (entry.isFolder() && !entry.isLink() && IsFolder(to)) {
        MoveContents(from, to, depth, message);
        return;
    }
    if (!entry.isFolder()) {
        MakeReplaceable(to);
    }
    // No MOVEFILE_COPY_ALLOWED: across volumes we copy and delete item by item ourselves, so a
    // failure leaves every source item whose copy did not complete where it was.
    const DWORD flags = entry.isFolder() ? 0 : MOVEFILE_REPLACE_EXISTING;
    if (RetryWhileBusy(from, [&] { return MoveFileExW(Wide(from), Wide(to), flags) != 0; })) {
        return;
    }
    const DWORD error = GetLastError();
    if (error != ERROR_NOT_SAME_DEVICE) {
        ThrowLastError(message, error);
    }
    // Across volumes a link cannot travel: the one inside the tree goes with its source (as a copy
    // leaves it out), the one the caller named stays, refused. Never is its target entered.
    if (entry.isLink()) {
        if (depth == 0) {
            ThrowLastError(message, error);
        }
        DeleteEntry(from, entry, depth, message);
        return;
    }
    if (entry.isFolder()) {
        MakeFolder(to, message);
        MoveContents(from, to, depth, message);
        return;
    }
    CopyFileOver(from, to, message);
    RemoveFile(from, message);
}

void MoveContents(const std::u16string& from, const std::u16string& to, int depth,
                  const char* message) {
    for (const Entry& child : ListFolder(from, message)) {
        MoveEntry(from + u"\\" + child.name, to + u"\\" + child.name, child, depth + 1, message);
    }
    RemoveFolder(from, message);
}

// The entry record of an existing item; the caller's checks have made sure it exists. Its own
// find record carries the reparse tag; a root has none, and no tag.
Entry EntryOf(const std::u16string& longPath, const char* message) {
    WIN32_FIND_DATAW found;
    const UniqueFindHandle search(FindFirstFileW(Wide(longPath), &found));
    if (search.valid()) {
        return Entry{u"", found.dwFileAttributes, found.dwReserved0};
    }
    const DWORD attributes = AttributesOf(longPath);
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        ThrowLastError(message, GetLastError());
    }
    return Entry{u"", attributes, 0};
}

// A copy or move onto itself or into its own tree would never end; the shell refuses it too.
void RefuseOwnTree(const std::u16string& from, const std::u16string& to, const char* message) {
    if (to.size() < from.size() || (to.size() > from.size() && to[from.size()] != u'\\')) {
        return;
    }
    if (CompareStringOrdinal(Wide(from), static_cast<int>(from.size()), Wide(to),
                             static_cast<int>(from.size()), TRUE) == CSTR_EQUAL) {
        ThrowLastError(message, ERROR_INVALID_PARAMETER);
    }
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
    const std::u16string from = LongForm(source);
    const std::u16string to = LongForm(target);
    RefuseOwnTree(from, to, message);
    CopyEntry(from, to, EntryOf(from, message), 0, message);
}

void MoveTree(const std::u16string& source, const std::u16string& target, const char* message) {
    const std::u16string from = LongForm(source);
    const std::u16string to = LongForm(target);
    RefuseOwnTree(from, to, message);
    MoveEntry(from, to, EntryOf(from, message), 0, message);
}

void DeleteTree(const std::u16string& path, const char* message) {
    const std::u16string longPath = LongForm(path);
    DeleteEntry(longPath, EntryOf(longPath, message), 0, message);
}

}  // namespace long_path
}  // namespace slib
