// The existence and kind test every check of the file manager is built on.

#include <windows.h>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"

namespace slib {

uint32_t file_manager_detail::QueryItemKind(const wchar_t* systemPath) {
    const DWORD attributes = GetFileAttributesW(systemPath);
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? ItemKind::kFolder : ItemKind::kFile;
    }
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
        return ItemKind::kNone;
    }
    Throw(kPermissionDenied, "Insufficent file permissions");
}

uint32_t FileManager::getItemKind(const String& path) const {
    return file_manager_detail::QueryItemKind(
        file_manager_detail::Wide(WithLongPathPrefix(path.units())));
}

}  // namespace slib
