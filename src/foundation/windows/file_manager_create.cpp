// Creation of empty files and single folders, always through the long-path form.

#include <windows.h>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"

namespace slib {

using file_manager_detail::Wide;

void FileManager::createDirectory(const String& path) const {
    if (!CreateDirectoryW(Wide(WithLongPathPrefix(path.units())), nullptr)) {
        ThrowLastError("Cannot create directory", GetLastError());
    }
}

void FileManager::createFile(const String& path, bool overwrite) const {
    const UniqueFileHandle file(CreateFileW(
        Wide(WithLongPathPrefix(path.units())), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
        overwrite ? CREATE_ALWAYS : CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) {
        ThrowLastError("Cannot create file", GetLastError());
    }
}

}  // namespace slib
