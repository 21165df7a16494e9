// The walk on Linux: each folder opened from the one holding it, never through a symbolic link
// (O_NOFOLLOW), so a link put in a folder's place meanwhile is not entered either. Items are
// taken in the order NTFS lists them (names compared in upper case), so the same tree packs to
// the same archive here and on Windows, whatever order the file system keeps.

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <optional>

#include "archive/folder_walk.h"
#include "archive/posix/entry_file_time.h"
#include "foundation/case_fold.h"
#include "foundation/file_name_bytes.h"
#include "foundation/posix/system_path.h"
#include "foundation/posix/unique_fds.h"

namespace archive {

namespace {

struct Listed {
    std::string name;  // bytes, as the folder holds it
    std::u16string text;
    struct stat status;
};

bool ListedBefore(const Listed& a, const Listed& b) {
    const size_t common = std::min(a.text.size(), b.text.size());
    for (size_t i = 0; i < common; ++i) {
        const char16_t left = slib::SimpleUpperCase(a.text[i]);
        const char16_t right = slib::SimpleUpperCase(b.text[i]);
        if (left != right) {
            return left < right;
        }
    }
    return a.text.size() != b.text.size() ? a.text.size() < b.text.size() : a.name < b.name;
}

// The files and folders of the open folder `fd` (which it takes), sorted; links and other items
// left out. An unreadable folder lists nothing.
std::vector<Listed> ListFolder(slib::UniqueFd fd) {
    std::vector<Listed> items;
    const int folderFd = fd.get();
    slib::UniqueDir folder(fdopendir(folderFd));
    if (!folder) {
        return items;
    }
    (void)fd.release();  // the stream owns it now
    while (const dirent* entry = readdir(folder.get())) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        Listed item{name, slib::FileNameBytesToText(name), {}};
        if (fstatat(folderFd, name.c_str(), &item.status, AT_SYMLINK_NOFOLLOW) != 0 ||
            !(S_ISREG(item.status.st_mode) || S_ISDIR(item.status.st_mode))) {
            continue;
        }
        items.push_back(std::move(item));
    }
    std::sort(items.begin(), items.end(), ListedBefore);
    return items;
}

struct Level {
    slib::UniqueFd fd;  // the folder, for opening its subfolders
    std::u16string relativePath;
    std::vector<Listed> items;
    size_t next = 0;
};

std::unique_ptr<Level> OpenLevel(slib::UniqueFd fd, std::u16string relativePath) {
    auto level = std::make_unique<Level>();
    level->relativePath = std::move(relativePath);
    if (fd) {
        level->fd.reset(fcntl(fd.get(), F_DUPFD_CLOEXEC, 0));
        level->items = ListFolder(std::move(fd));
    }
    return level;
}

}  // namespace

FolderWalk WalkFolder(const std::u16string& source) {
    FolderWalk walk;
    const std::optional<std::string> path = slib::SystemPath(source);
    if (!path) {
        return walk;
    }
    // The folder named may itself be a link: the caller chose it.
    slib::UniqueFd top(open(path->c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!top) {
        return walk;
    }
    walk.sourceIsFolder = true;
    // Open folders from the top down to the one being read: no recursion, however deep.
    std::vector<std::unique_ptr<Level>> open;
    open.push_back(OpenLevel(std::move(top), u""));
    while (!open.empty()) {
        Level& level = *open.back();
        if (level.next == level.items.size()) {
            open.pop_back();
            continue;
        }
        const Listed& item = level.items[level.next++];
        WalkedItem walked{level.relativePath + u"/" + item.text, EntryTimeFromStatus(item.status),
                          static_cast<uint64_t>(item.status.st_size)};
        if (S_ISREG(item.status.st_mode)) {
            walk.files.push_back(std::move(walked));
            continue;
        }
        walked.size = 0;
        walk.folders.push_back(walked);
        slib::UniqueFd below(openat(level.fd.get(), item.name.c_str(),
                                    O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        open.push_back(OpenLevel(std::move(below), walked.relativePath));
    }
    return walk;
}

}  // namespace archive
