// Creation of empty files and single folders; the mode is the umask's, as any program's.

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/posix/item_path.h"
#include "foundation/posix/unique_fds.h"

namespace slib {

void FileManager::createDirectory(const String& path) const {
    const char* message = "Cannot create directory";
    if (::mkdir(ItemPathBytes(path, message).c_str(), 0777) != 0) {
        ThrowErrno(message, errno);
    }
}

void FileManager::createFile(const String& path, bool overwrite) const {
    const char* message = "Cannot create file";
    const UniqueFd file(::open(ItemPathBytes(path, message).c_str(),
                               O_WRONLY | O_CREAT | O_CLOEXEC | (overwrite ? O_TRUNC : O_EXCL),
                               0666));
    if (!file.valid()) {
        ThrowErrno(message, errno);
    }
}

}  // namespace slib
