// The item an item-kind keyword asks for, on either system's createFile and createDirectory.

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"

namespace slib {

void FileManager::createItem(const String& path, int32_t kindPosition) const {
    switch (kindPosition) {
        case CreateKind::kFile:
        case CreateKind::kNew:
        case CreateKind::kFiles:
            // Creating never destroys: an existing file is an error, not an empty file.
            createFile(path, false);
            return;
        case CreateKind::kFolder:
        case CreateKind::kFolders:
            createDirectory(path);
            return;
        default:
            Throw(kBadParameter, "Wrong parameter");
    }
}

}  // namespace slib
