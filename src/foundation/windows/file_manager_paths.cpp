// Path forms the file manager hands out: the profile folder, the 8.3 form.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <shlobj.h>

#include <cwchar>
#include <vector>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"

namespace slib {

using file_manager_detail::Wide;

std::shared_ptr<const String> FileManager::getHomeFolder() const {
    wchar_t buffer[MAX_PATH] = {};
    const HRESULT result = SHGetFolderPathW(nullptr, CSIDL_PROFILE, nullptr, 0, buffer);
    if (result != S_OK) {
        ThrowHResult("Cannot get home folder of user", static_cast<int32_t>(result));
    }
    return String::FromWide(buffer, wcslen(buffer));
}

std::shared_ptr<const String> FileManager::toShortPath(const String& path) const {
    // Below MAX_PATH the plain normal form, which every system version expands reliably.
    const std::u16string normal = NormalizePath(path.units());
    const std::u16string longPath = normal.size() < MAX_PATH ? normal : WithLongPathPrefix(normal);
    const DWORD needed = GetShortPathNameW(Wide(longPath), nullptr, 0);
    if (needed == 0) {
        return std::make_shared<String>(path.units());
    }
    std::vector<wchar_t> buffer(needed + 1, L'\0');
    const DWORD length =
        GetShortPathNameW(Wide(longPath), buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length == 0 || length >= buffer.size()) {
        return std::make_shared<String>(path.units());
    }
    // Asked in the prefixed form, the system answers in it.
    return std::make_shared<String>(NormalizePath(
        std::u16string_view(reinterpret_cast<const char16_t*>(buffer.data()), length)));
}

}  // namespace slib
