// The archive layer's byte interfaces over Linux file descriptors.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>

#include "archive/archive_failures.h"
#include "archive/disk_files.h"
#include "archive/posix/entry_file_time.h"
#include "foundation/posix/replacement_file.h"
#include "foundation/posix/system_path.h"
#include "foundation/posix/unique_fds.h"

namespace archive {

namespace {

// Largest single read or write request, well inside what the system takes at once.
constexpr size_t kMaximumRequest = 1u << 30;

slib::UniqueFd OpenForReading(const std::u16string& path, int flags) {
    const std::optional<std::string> systemPath = slib::SystemPath(path);
    if (!systemPath) {
        return slib::UniqueFd();
    }
    return slib::UniqueFd(open(systemPath->c_str(), O_RDONLY | O_CLOEXEC | flags));
}

class FdSource : public ByteSource {
  public:
    FdSource(slib::UniqueFd fd, uint64_t size) : fd_(std::move(fd)), size_(size) {}
    uint64_t size() const override { return size_; }
    bool readAt(uint64_t offset, uint8_t* buffer, size_t length) override {
        while (length > 0) {
            const ssize_t got = pread(fd_.get(), buffer, std::min(length, kMaximumRequest),
                                      static_cast<off_t>(offset));
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got <= 0) {
                return false;
            }
            buffer += got;
            offset += static_cast<uint64_t>(got);
            length -= static_cast<size_t>(got);
        }
        return true;
    }

  private:
    slib::UniqueFd fd_;
    uint64_t size_;
};

class FdStream : public SourceFile {
  public:
    FdStream(const std::u16string& path, int flags) : fd_(OpenForReading(path, flags)) {
        struct stat status = {};
        if (!fd_ || fstat(fd_.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
            FailFileNotAdded();
        }
        size_ = static_cast<uint64_t>(status.st_size);
        time_ = EntryTimeFromStatus(status);
        posix_fadvise(fd_.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    }
    size_t read(uint8_t* buffer, size_t capacity) override {
        for (;;) {
            const ssize_t got = ::read(fd_.get(), buffer, std::min(capacity, kMaximumRequest));
            if (got >= 0) {
                return static_cast<size_t>(got);
            }
            if (errno != EINTR) {
                FailFileNotAdded();
            }
        }
    }
    uint64_t size() const override { return size_; }
    const EntryTime& time() const override { return time_; }

  private:
    slib::UniqueFd fd_;
    uint64_t size_ = 0;
    EntryTime time_;
};

class NewArchiveFile : public ArchiveOutput {
  public:
    explicit NewArchiveFile(const std::string& path) : file_(path) {
        if (!file_.valid()) {
            FailArchiveNotCreated();
        }
    }
    void writeAt(uint64_t offset, const uint8_t* data, size_t length) override {
        if (!file_.file().writeAt(offset, data, length)) {
            FailFileNotAdded();
        }
    }
    void complete() override {
        if (!file_.commit()) {
            FailArchiveNotCreated();
        }
    }

  private:
    slib::ReplacementFile file_;
};

}  // namespace

std::unique_ptr<ByteSource> OpenArchiveSource(const std::u16string& path) {
    slib::UniqueFd fd = OpenForReading(path, 0);
    struct stat status = {};
    if (!fd || fstat(fd.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return nullptr;
    }
    return std::make_unique<FdSource>(std::move(fd), static_cast<uint64_t>(status.st_size));
}

std::unique_ptr<SourceFile> OpenSourceFile(const std::u16string& path, bool named) {
    return std::make_unique<FdStream>(path, named ? 0 : O_NOFOLLOW);
}

void AddItemAttributes(const std::u16string& path, EntryTime& time) {
    const std::optional<std::string> systemPath = slib::SystemPath(path);
    struct stat status = {};
    if (systemPath && stat(systemPath->c_str(), &status) == 0) {
        const EntryTime listed = EntryTimeFromStatus(status);
        time.attributes = listed.attributes;
        time.unixMode = listed.unixMode;
    }
}

bool IsSameFile(const std::u16string& a, const std::u16string& b) {
    const std::optional<std::string> first = slib::SystemPath(a);
    const std::optional<std::string> second = slib::SystemPath(b);
    struct stat one = {};
    struct stat other = {};
    return first && second && stat(first->c_str(), &one) == 0 &&
           stat(second->c_str(), &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

std::unique_ptr<ArchiveOutput> CreateArchiveOutput(const std::u16string& path) {
    const std::optional<std::string> systemPath = slib::SystemPath(path);
    if (!systemPath) {
        FailArchiveNotCreated();
    }
    return std::make_unique<NewArchiveFile>(*systemPath);
}

}  // namespace archive
