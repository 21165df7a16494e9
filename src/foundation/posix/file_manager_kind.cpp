// The existence and kind test every check of the file manager is built on.

#include <sys/stat.h>

#include <cerrno>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/posix/item_kind.h"
#include "foundation/posix/item_path.h"

namespace slib {

uint32_t ItemKindAt(const std::string& path) {
    struct stat info;
    if (::stat(path.c_str(), &info) == 0) {
        return S_ISDIR(info.st_mode) ? ItemKind::kFolder : ItemKind::kFile;
    }
    if (errno == ENOENT || errno == ENOTDIR) {
        return ::lstat(path.c_str(), &info) == 0 ? ItemKind::kFile : ItemKind::kNone;
    }
    Throw(kPermissionDenied, "Insufficent file permissions");
}

uint32_t FileManager::getItemKind(const String& path) const {
    return ItemKindAt(ItemPathBytes(path, "Insufficent file permissions"));
}

}  // namespace slib
