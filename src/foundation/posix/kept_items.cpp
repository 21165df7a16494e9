#include "foundation/posix/kept_items.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <vector>

#include "foundation/posix/item_identity.h"
#include "foundation/posix/unique_fds.h"

namespace slib {

bool IsVolumeRoot(const std::string& path) {
    struct stat item;
    struct stat parent;
    if (::lstat(path.c_str(), &item) != 0 || !S_ISDIR(item.st_mode) ||
        ::stat((path + "/..").c_str(), &parent) != 0) {
        return false;
    }
    // ".." of the root is the root itself; crossing a mount point changes the device.
    return item.st_dev != parent.st_dev || IdOf(item) == IdOf(parent);
}

namespace {

bool AnyIsOrHolds(const std::vector<ItemId>& ids, const std::string& folder) {
    if (ids.empty()) {
        return false;
    }
    // Upwards by "..", never by text: the kernel knows where each folder really hangs.
    UniqueFd current(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    while (current.valid()) {
        struct stat info;
        if (::fstat(current.get(), &info) != 0) {
            return false;
        }
        if (std::find(ids.begin(), ids.end(), IdOf(info)) != ids.end()) {
            return true;
        }
        UniqueFd parent(::openat(current.get(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
        struct stat parentInfo;
        if (!parent.valid() || ::fstat(parent.get(), &parentInfo) != 0 ||
            IdOf(parentInfo) == IdOf(info)) {
            return false;
        }
        current = std::move(parent);
    }
    return false;
}

}  // namespace

bool IsOrHolds(const std::string& path, const std::string& folder) {
    return AnyIsOrHolds(IdsOfPath(path), folder);
}

bool ItselfIsOrHolds(const std::string& path, const std::string& folder) {
    struct stat item;
    if (::lstat(path.c_str(), &item) != 0) {
        return false;
    }
    return AnyIsOrHolds({IdOf(item)}, folder);
}

}  // namespace slib
