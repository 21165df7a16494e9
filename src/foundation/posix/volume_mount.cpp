// FileMaker Server on Linux mounts nothing for a script: shares are the administrator's to mount
// on the server (fstab, autofs), where every engine's account sees them under a path.
#include "foundation/file_manager.h"
#include "foundation/unavailable_here.h"

namespace slib {

std::shared_ptr<const String> FileManager::mountVolume(const String&,
                                                       const std::shared_ptr<const String>&,
                                                       const std::shared_ptr<const String>&,
                                                       const std::shared_ptr<const String>&) const {
    ThrowUnavailableHere(
        "Mounting is not available on Linux: the administrator mounts shares on the server");
}

void FileManager::unmountVolume(const String&) const {
    ThrowUnavailableHere(
        "Unmounting is not available on Linux: the administrator unmounts shares on the server");
}

}  // namespace slib
