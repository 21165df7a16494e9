#include "foundation/posix/tree_walk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "foundation/exception.h"
#include "foundation/posix/item_identity.h"

namespace slib {

namespace {

constexpr int kChildFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// The entry names of an open folder, read through a descriptor of its own so the caller's stays
// usable for the *at calls. Empty, with errno set, when it cannot be read.
bool ReadNames(int folder, std::vector<std::string>& names) {
    UniqueFd own(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!own.valid()) {
        return false;
    }
    UniqueDir stream(::fdopendir(own.get()));
    if (!stream.valid()) {
        return false;
    }
    static_cast<void>(own.release());  // the stream owns it now
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(stream.get());
        if (entry == nullptr) {
            return errno == 0;
        }
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(name);
        }
    }
}

// Opens the folder `name` in `folder`, only when it is still the item `expected` describes.
UniqueFd OpenChildFolder(int folder, const std::string& name, const struct stat& expected) {
    UniqueFd child(::openat(folder, name.c_str(), kChildFolderFlags));
    struct stat opened;
    if (child.valid() && (::fstat(child.get(), &opened) != 0 || IdOf(opened) != IdOf(expected))) {
        errno = EAGAIN;  // swapped since it was looked at
        child.reset();
    }
    return child;
}

// Emptying a folder needs the right to write it, which a read-only folder of the owner's lacks
// (a copied one, or one being deleted, as Windows deletes read-only items). The folder goes once
// empty, so the mode it had goes with it; someone else's folder stays as it is, and refuses.
void AllowEmptying(int folder, const struct stat& info) {
    if ((info.st_mode & S_IWUSR) == 0) {
        ::fchmod(folder, (info.st_mode & 07777) | S_IRWXU);
    }
}

void WriteAll(int to, const char* data, size_t size, const char* message) {
    while (size > 0) {
        const ssize_t written = ::write(to, data, size);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            ThrowErrno(message, errno);
        }
        data += written;
        size -= static_cast<size_t>(written);
    }
}

void CopyFileData(int from, int to, const char* message) {
    std::vector<char> buffer(1 << 20);
    for (;;) {
        const ssize_t got = ::read(from, buffer.data(), buffer.size());
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            ThrowErrno(message, errno);
        }
        if (got == 0) {
            return;
        }
        WriteAll(to, buffer.data(), static_cast<size_t>(got), message);
    }
}

// Makes what was written durable before anything names it: fsync, then a checked close.
void Commit(UniqueFd& written, const char* message) {
    if (::fsync(written.get()) != 0) {
        ThrowErrno(message, errno);
    }
    if (::close(written.release()) != 0) {
        ThrowErrno(message, errno);
    }
}

void KeepTimes(int fd, const struct stat& source) {
    const struct timespec times[2] = {source.st_atim, source.st_mtim};
    ::futimens(fd, times);  // a time not kept is no reason to lose the copy
}

void CopyFile(int from, const std::string& name, int into, const std::string& to,
              const struct stat& info, bool follow, const char* message) {
    UniqueFd source(::openat(from, name.c_str(), O_RDONLY | O_CLOEXEC | (follow ? 0 : O_NOFOLLOW)));
    if (!source.valid()) {
        ThrowErrno(message, errno);
    }
    UniqueFd target(
        ::openat(into, to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, info.st_mode & 07777));
    if (!target.valid()) {
        ThrowErrno(message, errno);
    }
    CopyFileData(source.get(), target.get(), message);
    ::fchmod(target.get(), info.st_mode & 07777);  // the umask narrowed the mode at creation
    KeepTimes(target.get(), info);
    Commit(target, message);
}

void CopyLink(int from, const std::string& name, int into, const std::string& to,
              const char* message) {
    std::vector<char> target(PATH_MAX + 1);
    const ssize_t length = ::readlinkat(from, name.c_str(), target.data(), target.size() - 1);
    if (length < 0) {
        ThrowErrno(message, errno);
    }
    target[static_cast<size_t>(length)] = '\0';
    if (::symlinkat(target.data(), into, to.c_str()) != 0) {
        ThrowErrno(message, errno);
    }
}

void CopyFolder(int from, const std::string& name, int into, const std::string& to,
                const struct stat& info, const char* message) {
    UniqueFd source = OpenChildFolder(from, name, info);
    if (!source.valid()) {
        ThrowErrno(message, errno);
    }
    // Owner-writable while it fills; its own mode once it is full.
    if (::mkdirat(into, to.c_str(), 0700) != 0) {
        ThrowErrno(message, errno);
    }
    UniqueFd target(::openat(into, to.c_str(), kChildFolderFlags));
    if (!target.valid()) {
        ThrowErrno(message, errno);
    }
    std::vector<std::string> names;
    if (!ReadNames(source.get(), names)) {
        ThrowErrno(message, errno);
    }
    for (const std::string& child : names) {
        CopyEntry(source.get(), child, target.get(), child, false, message);
    }
    ::fchmod(target.get(), info.st_mode & 07777);
    KeepTimes(target.get(), info);
    if (::fsync(target.get()) != 0) {
        ThrowErrno(message, errno);
    }
}

}  // namespace

UniqueFd OpenFolder(const std::string& path) {
    return UniqueFd(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

uint64_t TreeSize(int folder) {
    struct stat self;
    std::vector<std::string> names;
    if (::fstat(folder, &self) != 0 || !ReadNames(folder, names)) {
        return 0;
    }
    uint64_t total = 0;
    for (const std::string& name : names) {
        struct stat info;
        if (::fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
            continue;
        }
        if (S_ISREG(info.st_mode)) {
            total += static_cast<uint64_t>(info.st_size);
        } else if (S_ISDIR(info.st_mode) && info.st_dev == self.st_dev) {
            const UniqueFd child = OpenChildFolder(folder, name, info);
            total += child.valid() ? TreeSize(child.get()) : 0;
        }
    }
    return total;
}

void RemoveEntry(int folder, const std::string& name, const char* message) {
    struct stat info;
    if (::fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
        ThrowErrno(message, errno);
    }
    if (!S_ISDIR(info.st_mode)) {
        if (::unlinkat(folder, name.c_str(), 0) != 0) {
            ThrowErrno(message, errno);
        }
        return;
    }
    struct stat self;
    if (::fstat(folder, &self) == 0 && self.st_dev == info.st_dev) {
        const UniqueFd child = OpenChildFolder(folder, name, info);
        if (!child.valid()) {
            ThrowErrno(message, errno);
        }
        AllowEmptying(child.get(), info);
        std::vector<std::string> names;
        if (!ReadNames(child.get(), names)) {
            ThrowErrno(message, errno);
        }
        for (const std::string& entry : names) {
            RemoveEntry(child.get(), entry, message);
        }
    }
    if (::unlinkat(folder, name.c_str(), AT_REMOVEDIR) != 0) {
        ThrowErrno(message, errno);
    }
}

void CopyEntry(int from, const std::string& name, int into, const std::string& to, bool followTop,
               const char* message) {
    struct stat info;
    if (::fstatat(from, name.c_str(), &info, followTop ? 0 : AT_SYMLINK_NOFOLLOW) != 0) {
        ThrowErrno(message, errno);
    }
    if (S_ISLNK(info.st_mode)) {
        CopyLink(from, name, into, to, message);
    } else if (S_ISREG(info.st_mode)) {
        CopyFile(from, name, into, to, info, followTop, message);
    } else if (S_ISDIR(info.st_mode)) {
        // The top folder the user named may be reached through a link; below it, never.
        if (followTop) {
            UniqueFd top(::openat(from, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
            if (!top.valid()) {
                ThrowErrno(message, errno);
            }
            CopyFolder(top.get(), ".", into, to, info, message);
        } else {
            CopyFolder(from, name, into, to, info, message);
        }
    } else {
        ThrowErrno(message, EINVAL);
    }
}

void PlaceEntry(int from, const std::string& name, int into, const std::string& to,
                const char* message) {
    struct stat source;
    struct stat target;
    if (::fstatat(from, name.c_str(), &source, AT_SYMLINK_NOFOLLOW) != 0) {
        ThrowErrno(message, errno);
    }
    const bool merge = S_ISDIR(source.st_mode) &&
                       ::fstatat(into, to.c_str(), &target, AT_SYMLINK_NOFOLLOW) == 0 &&
                       S_ISDIR(target.st_mode);
    if (!merge) {
        if (::renameat(from, name.c_str(), into, to.c_str()) != 0) {
            ThrowErrno(message, errno);
        }
        return;
    }
    const UniqueFd sourceFolder = OpenChildFolder(from, name, source);
    const UniqueFd targetFolder = OpenChildFolder(into, to, target);
    if (!sourceFolder.valid() || !targetFolder.valid()) {
        ThrowErrno(message, errno);
    }
    AllowEmptying(sourceFolder.get(), source);
    std::vector<std::string> names;
    if (!ReadNames(sourceFolder.get(), names)) {
        ThrowErrno(message, errno);
    }
    for (const std::string& child : names) {
        PlaceEntry(sourceFolder.get(), child, targetFolder.get(), child, message);
    }
    if (::unlinkat(from, name.c_str(), AT_REMOVEDIR) != 0) {
        ThrowErrno(message, errno);
    }
}

}  // namespace slib
