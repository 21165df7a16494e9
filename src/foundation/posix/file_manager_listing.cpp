// Folder listings.

#include <dirent.h>
#include <fcntl.h>

#include <cerrno>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/file_name_bytes.h"
#include "foundation/posix/item_path.h"
#include "foundation/posix/unique_fds.h"

namespace slib {

std::vector<std::shared_ptr<const String>> FileManager::listFolder(const String& path) const {
    const char* message = "Cannot read folder contents";
    UniqueFd folder(
        ::open(ItemPathBytes(path, message).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.valid()) {
        ThrowErrno(message, errno);
    }
    const UniqueDir stream(::fdopendir(folder.get()));
    if (!stream.valid()) {
        ThrowErrno(message, errno);
    }
    static_cast<void>(folder.release());  // the stream owns it now
    std::vector<std::shared_ptr<const String>> names;
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(stream.get());
        if (entry == nullptr) {
            // Anything but the normal end would leave the list silently short.
            if (errno != 0) {
                ThrowErrno(message, errno);
            }
            return names;
        }
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(std::make_shared<String>(FileNameBytesToText(name)));
        }
    }
}

}  // namespace slib
