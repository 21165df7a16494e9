#pragma once
// Which item a path or descriptor is: its device and inode. Two names are the same item exactly
// when these are equal, whatever their text (links, "..", bind mounts of one folder).

#include <sys/stat.h>

#include <string>
#include <vector>

namespace slib {

struct ItemId {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const ItemId& other) const {
        return device == other.device && inode == other.inode;
    }
    bool operator!=(const ItemId& other) const { return !(*this == other); }
};

inline ItemId IdOf(const struct stat& info) {
    return {info.st_dev, info.st_ino};
}

// Every item `path` answers to: the item itself and, when it is a link, what it leads to. Empty
// when nothing is there.
std::vector<ItemId> IdsOfPath(const std::string& path);

}  // namespace slib
