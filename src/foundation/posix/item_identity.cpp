#include "foundation/posix/item_identity.h"

namespace slib {

std::vector<ItemId> IdsOfPath(const std::string& path) {
    std::vector<ItemId> ids;
    struct stat info;
    if (::lstat(path.c_str(), &info) == 0) {
        ids.push_back(IdOf(info));
        if (S_ISLNK(info.st_mode) && ::stat(path.c_str(), &info) == 0) {
            ids.push_back(IdOf(info));
        }
    }
    return ids;
}

}  // namespace slib
