#pragma once
// The walk of a folder to be packed: every folder and file below it, depth first (a folder's
// contents follow it), each folder's items in the order the file system lists them.

#include <cstdint>
#include <string>
#include <vector>

#include "archive/entry_time.h"

namespace archive {

struct WalkedItem {
    std::u16string relativePath;  // "\" then the path below the walked folder: "\sub\a.txt"
    EntryTime time;
    uint64_t size = 0;  // of a file, as listed (it may change before it is read)
};

struct FolderWalk {
    bool sourceIsFolder = false;  // false: both lists are empty
    std::vector<WalkedItem> folders;
    std::vector<WalkedItem> files;
};

// A folder that cannot be listed contributes its own entry and nothing below it. A linked folder
// (junction or symbolic link) is not entered, so a link back up the tree cannot make the walk
// endless; it is stored as an empty folder.
FolderWalk WalkFolder(const std::u16string& source);

// `path` without trailing separators ("C:\" gives "C:"), ready to have "\" and a name joined to
// it: the long-path form takes names as they are, so a doubled separator would not resolve.
std::u16string WithoutTrailingSeparators(std::u16string path);

}  // namespace archive
