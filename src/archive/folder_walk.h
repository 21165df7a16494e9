#pragma once
// The walk of a folder to be packed: every folder and file below it, depth first (a folder's
// contents follow it), each folder's items in the order the file system lists them.

#include <cstdint>
#include <string>
#include <vector>

#include "archive/entry_time.h"

namespace archive {

struct WalkedItem {
    // The separator, then the path below the walked folder: "\sub\a.txt", "/sub/a.txt".
    std::u16string relativePath;
    EntryTime time;
    uint64_t size = 0;  // of a file, as listed (it may change before it is read)
};

struct FolderWalk {
    bool sourceIsFolder = false;  // false: both lists are empty
    std::vector<WalkedItem> folders;
    std::vector<WalkedItem> files;
};

// A folder that cannot be listed contributes its own entry and nothing below it. Links are never
// entered, so a link back up the tree cannot make the walk endless: on Windows a linked folder
// (junction or symbolic link) is stored as an empty folder; on Linux a symbolic link, like any
// item that is neither file nor folder (pipe, socket, device), is left out.
FolderWalk WalkFolder(const std::u16string& source);

// `path` without trailing separators ("C:\" gives "C:", "/" gives ""), ready to have a separator
// and a name joined to it: the long-path form takes names as they are, so a doubled separator
// would not resolve.
std::u16string WithoutTrailingSeparators(std::u16string path);

}  // namespace archive
