// Item sizes: a file's own size, or the 64-bit total of everything below a folder, links left out.

#include <sys/stat.h>

#include <cerrno>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/posix/home_folder.h"
#include "foundation/posix/item_path.h"
#include "foundation/posix/tree_walk.h"

namespace slib {

std::shared_ptr<const String> FileManager::getHomeFolder() const {
    return std::make_shared<String>(HomeFolder());
}

uint64_t FileManager::getItemSize(const String& path) const {
    const char* message = "Cannot get item size";
    // A named link gives the size of what it leads to, as on Windows.
    struct stat info;
    if (::stat(ItemPathBytes(path, message).c_str(), &info) != 0) {
        ThrowErrno(message, errno);
    }
    return S_ISDIR(info.st_mode) ? getFolderSize(path) : static_cast<uint64_t>(info.st_size);
}

uint64_t FileManager::getFolderSize(const String& path) const {
    const UniqueFd folder = OpenFolder(ItemPathBytes(path, "Cannot get item size"));
    return folder.valid() ? TreeSize(folder.get()) : 0;
}

}  // namespace slib
