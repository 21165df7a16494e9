// Item sizes: a file's own size, or the 64-bit total of everything below a folder, links left out.

#include <windows.h>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"
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
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(Wide(WithLongPathPrefix(path.units())), GetFileExInfoStandard,
                              &data)) {
        ThrowLastError("Cannot get item size", GetLastError());
    }
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return getFolderSize(path);
    }
    return Combine(data.nFileSizeHigh, data.nFileSizeLow);
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
