// Folder listings.

#include <windows.h>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"

namespace slib {

using file_manager_detail::Wide;

std::vector<std::shared_ptr<const String>> FileManager::listFolder(const String& path) const {
    std::u16string pattern = WithLongPathPrefix(path.units());
    if (pattern.empty() || pattern.back() != u'\\') {
        pattern += u'\\';
    }
    pattern += u'*';
    WIN32_FIND_DATAW entry{};
    const UniqueFindHandle search(FindFirstFileW(Wide(pattern), &entry));
    if (!search.valid()) {
        ThrowLastError("Cannot read folder contents", GetLastError());
    }
    std::vector<std::shared_ptr<const String>> names;
    do {
        const std::u16string name = String::FromWide(entry.cFileName)->units();
        if (name != u"." && name != u"..") {
            names.push_back(std::make_shared<String>(name));
        }
    } while (FindNextFileW(search.get(), &entry));
    // Anything but the normal end would leave the list silently short.
    const DWORD error = GetLastError();
    if (error != ERROR_NO_MORE_FILES) {
        ThrowLastError("Cannot read folder contents", error);
    }
    return names;
}

}  // namespace slib
