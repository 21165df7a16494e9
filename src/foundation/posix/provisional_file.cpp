#include "foundation/posix/provisional_file.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "foundation/file_name_bytes.h"
#include "foundation/posix/system_path.h"
#include "foundation/temporary_names.h"

namespace slib {

namespace {

// Large enough that the per-call cost vanishes, small enough for any system's I/O limits.
constexpr uint64_t kChunk = 4u << 20;
constexpr mode_t kNewFileMode = 0666;  // less the umask, as every tool creates files

// What open answers where the file system makes no unnamed files.
bool NoUnnamedFilesHere(int error) {
    return error == EOPNOTSUPP || error == EISDIR || error == EINVAL;
}

// What link answers where the file system keeps no second names.
bool NoHardLinksHere(int error) {
    return error == EPERM || error == EOPNOTSUPP || error == EMLINK || error == ENOSYS;
}

std::string TemporaryBeside(const std::string& target) {
    return TextToFileNameBytes(TemporaryNameBeside(FileNameBytesToText(target), PathStyle::kPosix))
        .value_or(std::string());
}

// The name an unnamed file is reached by while it is open.
std::string ProcPath(int fd) {
    return "/proc/self/fd/" + std::to_string(fd);
}

// A name for the open, unnamed file `fd`; never replaces anything.
int LinkUnnamed(int fd, int folder, const std::string& name) {
    if (linkat(AT_FDCWD, ProcPath(fd).c_str(), folder, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
        return 0;
    }
    const int error = errno;
    if (error != ENOENT || access("/proc/self/fd", F_OK) == 0) {
        return error;
    }
    return linkat(fd, "", folder, name.c_str(), AT_EMPTY_PATH) == 0 ? 0 : errno;
}

// Moves `from` to `to` unless something is there; 0 or errno.
int MoveWithoutReplacing(int fromFolder, const std::string& from, int toFolder,
                         const std::string& to) {
    if (linkat(fromFolder, from.c_str(), toFolder, to.c_str(), 0) == 0) {
        unlinkat(fromFolder, from.c_str(), 0);
        return 0;
    }
    if (!NoHardLinksHere(errno)) {
        return errno;
    }
    if (renameat2(fromFolder, from.c_str(), toFolder, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    return errno;
}

// The folder's own record of a new name reaches the disk too; where it cannot, the name may be
// lost in a power cut but the contents never cut short.
void SyncFolderOf(int folder, const std::string& name) {
    const UniqueFd opened(
        openat(folder, FolderOf(name).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened) {
        fsync(opened.get());
    }
}

}  // namespace

ProvisionalFile::ProvisionalFile(const std::string& target) {
    fd_.reset(open(FolderOf(target).c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kNewFileMode));
    if (fd_ || !NoUnnamedFilesHere(errno)) {
        if (!fd_) {
            fail(errno);
        }
        return;
    }
    // A leftover of a power cut may hold a name: a few fresh ones are tried.
    for (int attempt = 0; attempt < 4 && !fd_; ++attempt) {
        std::string name = TemporaryBeside(target);
        fd_.reset(
            open(name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW | O_CLOEXEC, kNewFileMode));
        if (fd_) {
            name_ = std::move(name);
        } else if (errno != EEXIST) {
            break;
        }
    }
    if (!fd_) {
        fail(errno);
    }
}

ProvisionalFile::ProvisionalFile(ProvisionalFile&& other) noexcept
    : fd_(std::move(other.fd_)),
      nameFolder_(other.nameFolder_),
      name_(std::exchange(other.name_, std::string())),
      end_(other.end_),
      error_(other.error_) {}

ProvisionalFile& ProvisionalFile::operator=(ProvisionalFile&& other) noexcept {
    if (this != &other) {
        discard();
        fd_ = std::move(other.fd_);
        nameFolder_ = other.nameFolder_;
        name_ = std::exchange(other.name_, std::string());
        end_ = other.end_;
        error_ = other.error_;
    }
    return *this;
}

ProvisionalFile::~ProvisionalFile() {
    discard();
}

void ProvisionalFile::discard() {
    if (!name_.empty()) {
        const int saved = errno;
        unlinkat(nameFolder_, name_.c_str(), 0);
        errno = saved;
        name_.clear();
    }
    fd_.reset();
}

bool ProvisionalFile::fail(int error) {
    error_ = error == 0 ? EIO : error;
    return false;
}

bool ProvisionalFile::writeAt(uint64_t offset, const uint8_t* bytes, uint64_t size) {
    while (size > 0) {
        const size_t chunk = static_cast<size_t>(std::min(size, kChunk));
        const ssize_t written = pwrite(fd_.get(), bytes, chunk, static_cast<off_t>(offset));
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return fail(errno);
        }
        if (written == 0) {
            return fail(ENOSPC);
        }
        bytes += written;
        offset += static_cast<uint64_t>(written);
        size -= static_cast<uint64_t>(written);
    }
    return true;
}

bool ProvisionalFile::write(const uint8_t* bytes, uint64_t size) {
    if (!writeAt(end_, bytes, size)) {
        return false;
    }
    end_ += size;
    return true;
}

bool ProvisionalFile::close(bool flush) {
    if (flush && fsync(fd_.get()) != 0) {
        return fail(errno);
    }
    // A descriptor being written is closed here, not silently: a late write-back error shows.
    if (::close(fd_.release()) != 0) {
        return fail(errno);
    }
    return true;
}

bool ProvisionalFile::nameBeside(int folder, const std::string& name) {
    for (int attempt = 0; attempt < 4 && name_.empty(); ++attempt) {
        std::string temporary = TemporaryBeside(name);
        const int error = LinkUnnamed(fd_.get(), folder, temporary);
        if (error == 0) {
            nameFolder_ = folder;
            name_ = std::move(temporary);
        } else if (error != EEXIST) {
            return fail(error);
        }
    }
    return !name_.empty() || fail(EEXIST);
}

bool ProvisionalFile::keepAt(int folder, const std::string& name, bool flush) {
    if (!fd_) {
        return fail(error_);
    }
    if (flush && fsync(fd_.get()) != 0) {
        return fail(errno);
    }
    const int error = name_.empty() ? LinkUnnamed(fd_.get(), folder, name)
                                    : MoveWithoutReplacing(nameFolder_, name_, folder, name);
    if (error != 0) {
        return fail(error);
    }
    name_.clear();
    if (::close(fd_.release()) != 0) {
        // Named only when whole: the contents are there, only the close complained.
        error_ = errno;
    }
    if (flush) {
        SyncFolderOf(folder, name);
    }
    return true;
}

bool ProvisionalFile::replaceAt(int folder, const std::string& name, bool flush) {
    if (!fd_) {
        return fail(error_);
    }
    if (!nameBeside(folder, name) || !close(flush)) {
        return false;
    }
    if (renameat(nameFolder_, name_.c_str(), folder, name.c_str()) != 0) {
        const int error = errno;
        discard();
        return fail(error);
    }
    name_.clear();
    if (flush) {
        SyncFolderOf(folder, name);
    }
    return true;
}

}  // namespace slib
