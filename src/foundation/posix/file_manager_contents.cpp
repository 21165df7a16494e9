// Reading and writing file contents at a position, in chunks, with every system call checked.
// Reads follow symbolic links, as every program's do; writes never go through one.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <vector>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_contents_rules.h"
#include "foundation/file_manager.h"
#include "foundation/posix/provisional_file.h"
#include "foundation/posix/system_path.h"
#include "foundation/posix/unique_fds.h"

namespace slib {

namespace {

// Large enough that the per-call cost vanishes, small enough for any system's I/O limits.
constexpr uint64_t kChunk = 4u << 20;

// The file opened for reading, or none when there is no file to read: a missing item, a folder,
// or a name no path can hold. A pipe would wait for a writer that may never come, a device such as
// /dev/zero would fill the memory before its end: the open does not wait, and only a regular file
// is read.
UniqueFd OpenForReading(const String& path) {
    const std::optional<std::string> systemPath = SystemPath(path.units());
    if (!systemPath) {
        return UniqueFd();
    }
    UniqueFd file(open(systemPath->c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file) {
        if (errno == ENOENT || errno == ENOTDIR) {
            return file;
        }
        Throw(kPermissionDenied, "Insufficent file permissions");
    }
    struct stat item = {};
    if (fstat(file.get(), &item) != 0) {
        ThrowErrno("Cannot read file", errno);
    }
    if (S_ISDIR(item.st_mode)) {
        return UniqueFd();
    }
    if (!S_ISREG(item.st_mode)) {
        Throw(kPermissionDenied, "Insufficent file permissions");
    }
    fcntl(file.get(), F_SETFL, fcntl(file.get(), F_GETFL) & ~O_NONBLOCK);
    return file;
}

// Up to `limit` bytes from `start` to the file's end, however large fstat said it was: a size
// can be stale (a network client's cache) or 0 (a file the system generates as it is read).
std::vector<uint8_t> ReadUpTo(int file, uint64_t start, uint64_t limit, uint64_t expected) {
    std::vector<uint8_t> bytes;
    bytes.reserve(static_cast<size_t>(std::min(limit, expected)));
    while (bytes.size() < limit) {
        const size_t done = bytes.size();
        const size_t chunk = static_cast<size_t>(std::min<uint64_t>(limit - done, kChunk));
        bytes.resize(done + chunk);
        const ssize_t got =
            pread(file, bytes.data() + done, chunk, static_cast<off_t>(start + done));
        if (got < 0) {
            bytes.resize(done);
            if (errno == EINTR) {
                continue;
            }
            ThrowErrno("Cannot read file", errno);
        }
        bytes.resize(done + static_cast<size_t>(got));
        if (got == 0) {
            break;
        }
        if (bytes.size() > kLargestRead) {
            ThrowTooLargeToRead();
        }
    }
    return bytes;
}

// All bytes at `offset` or an exception: no progress without an error counts as a full disk.
void WriteAllAt(int file, const Data& data, int64_t offset) {
    const uint8_t* bytes = data.bytes().data();
    uint64_t left = data.size();
    while (left > 0) {
        const size_t chunk = static_cast<size_t>(std::min(left, kChunk));
        const ssize_t written = pwrite(file, bytes, chunk, static_cast<off_t>(offset));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            ThrowErrno("Cannot write to file", written < 0 ? errno : ENOSPC);
        }
        bytes += written;
        offset += written;
        left -= static_cast<uint64_t>(written);
    }
}

// A new file holding `data` from byte `at` on (zero bytes before it), whole under its name or
// absent, whatever stops the writing.
void WriteNewFileAt(const std::string& target, const Data& data, int64_t at) {
    ProvisionalFile file(target);
    if (!file.valid()) {
        ThrowErrno("Cannot open file for writing", file.error());
    }
    if (!file.writeAt(static_cast<uint64_t>(at), data.bytes().data(), data.size())) {
        ThrowErrno("Cannot write to file", file.error());
    }
    if (!file.keepAs(target)) {
        ThrowErrno(file.error() == EEXIST ? "Cannot open file for writing" : "Cannot write to file",
                   file.error());
    }
}

}  // namespace

std::shared_ptr<const Data> FileManager::readFile(const String& path, FilePosition position,
                                                  uint64_t length) const {
    const UniqueFd file = OpenForReading(path);
    if (!file) {
        return std::make_shared<Data>();
    }
    struct stat item = {};
    if (fstat(file.get(), &item) != 0) {
        ThrowErrno("Cannot read file", errno);
    }
    const auto fileSize = static_cast<uint64_t>(item.st_size);
    const auto start = static_cast<uint64_t>(AbsoluteOffset(position, fileSize, true));
    const uint64_t expected = start < fileSize ? std::min(length, fileSize - start) : 0;
    if (expected > kLargestRead) {
        ThrowTooLargeToRead();
    }
    if (length == 0) {
        return std::make_shared<Data>();
    }
    return std::make_shared<Data>(ReadUpTo(file.get(), start, length, expected));
}

uint64_t FileManager::writeFile(const String& path, const Data& data, FilePosition position) const {
    const std::optional<std::string> target = SystemPath(path.units());
    if (!target) {
        ThrowErrno("Cannot open file for writing", EINVAL);
    }
    // O_NOFOLLOW: a symbolic link in the file's place is refused (ELOOP), never written through.
    UniqueFd file(open(target->c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    if (!file) {
        if (errno != ENOENT) {
            ThrowErrno("Cannot open file for writing", errno);
        }
        // Not there yet: made whole or not at all, the bytes where a new file puts them.
        WriteNewFileAt(*target, data, AbsoluteOffset(position, 0, false));
        return data.size();
    }
    struct stat item = {};
    if (fstat(file.get(), &item) != 0) {
        ThrowErrno("Cannot write to file", errno);
    }
    if (!S_ISREG(item.st_mode)) {
        ThrowErrno("Cannot open file for writing", EINVAL);
    }
    WriteAllAt(file.get(), data,
               AbsoluteOffset(position, static_cast<uint64_t>(item.st_size), false));
    // Closed here, not silently: a write-back error the close reports is a failed write.
    if (close(file.release()) != 0) {
        ThrowErrno("Cannot write to file", errno);
    }
    return data.size();
}

}  // namespace slib
