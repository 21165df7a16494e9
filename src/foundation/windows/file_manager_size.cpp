// Item sizes: a file's own size, or the 64-bit total of everything below a folder, links left out.

#include <windows.h>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/link_entries.h"

namespace slib {

using file_manager_detail::Wide;

namespace {

uint64_t Combine(DWORD high, DWORD low) {
    return (static_cast<uint64_t>(high) << 32) | low;
}

bool IsDotEntry(const wchar_t* name) {
    return name[0] == L'.' && (name[1] == L'\0' || (name[1] == L'.' && name[2] == L'\0'));
}

}  // namespace

uint64_t FileManager::getItemSize(const String& path) const {
    // The item itself, opened: a path query describes a file symbolic link rather than the file,
    // and a network client may answer it from a stale cache.
    const UniqueFileHandle item =
        OpenShared(WithLongPathPrefix(path.units()), FILE_READ_ATTRIBUTES, FileUse::kAttributes,
                   OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    BY_HANDLE_FILE_INFORMATION info;
    if (!item.valid() || !GetFileInformationByHandle(item.get(), &info)) {
        ThrowLastError("Cannot get item size", GetLastError());
    }
    if ((info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return getFolderSize(path);
    }
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(item.get(), &size)) {
        ThrowLastError("Cannot get item size", GetLastError());
    }
    return static_cast<uint64_t>(size.QuadPart);
}

uint64_t FileManager::getFolderSize(const String& path) const {
    std::u16string folder = path.units();
    if (folder.empty() || folder.back() != u'\\') {
        folder += u'\\';
    }
    std::u16string pattern = WithLongPathPrefix(folder);
    if (pattern.empty() || pattern.back() != u'\\') {
        pattern += u'\\';
    }
    WIN32_FIND_DATAW entry;
    const UniqueFindHandle search(FindFirstFileW(Wide(pattern + u"*"), &entry));
    if (!search.valid()) {
        return 0;  // empty, unreadable or missing: nothing to count
    }
    uint64_t total = 0;
    do {
        // A link counts nothing: what it points at belongs elsewhere (or is this very tree).
        if (IsDotEntry(entry.cFileName) || IsLinkEntry(entry)) {
            continue;
        }
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            const String child(folder + reinterpret_cast<const char16_t*>(entry.cFileName));
            total += getFolderSize(child);
        } else {
            total += Combine(entry.nFileSizeHigh, entry.nFileSizeLow);
        }
    } while (FindNextFileW(search.get(), &entry));
    return total;
}

}  // namespace slib
