// Item dates and free space; the attribute-id dispatch is shared (../file_manager_attributes.cpp)
// and owner, group and rights are in file_manager_security.cpp.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/item_dates.h"
#include "foundation/posix/item_path.h"
#include "foundation/posix/local_time.h"
#include "foundation/posix/unique_fds.h"

namespace slib {

namespace {

constexpr char kUnstorableDate[] = "The file cannot keep this date";

std::shared_ptr<Object> ItemDate(const std::string& path, uint32_t id) {
    const char* message = "Cannot get item attributes";
    struct statx info {};
    const unsigned int wanted = id == AttributeId::kCreated ? STATX_BTIME : STATX_MTIME;
    if (::statx(AT_FDCWD, path.c_str(), 0, wanted, &info) != 0) {
        ThrowErrno(message, errno);
    }
    // Not every file system keeps a creation time; none is not made up from another.
    if ((info.stx_mask & wanted) == 0) {
        ThrowErrno(message, ENOTSUP);
    }
    const struct statx_timestamp& time =
        id == AttributeId::kCreated ? info.stx_btime : info.stx_mtime;
    std::shared_ptr<Date> date = UtcToLocalDate({time.tv_sec, time.tv_nsec});
    if (!date) {
        ThrowErrno(message, EOVERFLOW);
    }
    return date;
}

// Whether the file system kept `time` as set: some stop short of the range asked (ext4 at 2446).
bool KeptAsSet(const std::string& path, const struct timespec& time) {
    struct stat info;
    if (::stat(path.c_str(), &info) != 0) {
        return false;
    }
    const int64_t difference = info.st_mtim.tv_sec - time.tv_sec;
    return difference >= -2 && difference <= 2;
}

// Sets the modification date, creating an empty file where nothing is; a folder is refused as
// the Windows body refuses it. A date the file cannot keep is refused and the old one (or the
// absence of the file) restored.
void SetModificationDate(const std::string& path, const Object& value) {
    const char* message = "Cannot modify file modification date";
    const auto* date = dynamic_cast<const Date*>(&value);
    if (date == nullptr) {
        Throw(kBadParameter, message);
    }
    const std::optional<struct timespec> time = LocalDateToUtc(*date);
    if (!time) {
        Throw(kBadParameter, kUnstorableDate);
    }
    struct stat before {};
    const bool existed = ::stat(path.c_str(), &before) == 0;
    if (existed && S_ISDIR(before.st_mode)) {
        ThrowErrno(message, EACCES);
    }
    if (!existed) {
        const UniqueFd created(
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, 0666));
        if (!created.valid()) {
            ThrowErrno(message, errno);
        }
    }
    // Times only, by name: a read-only file still takes a date from its owner.
    const struct timespec times[2] = {{0, UTIME_OMIT}, *time};
    const bool set = ::utimensat(AT_FDCWD, path.c_str(), times, 0) == 0;
    const int error = errno;
    if (set && KeptAsSet(path, *time)) {
        return;
    }
    if (existed) {
        const struct timespec old[2] = {{0, UTIME_OMIT}, before.st_mtim};
        ::utimensat(AT_FDCWD, path.c_str(), old, 0);
    } else {
        ::unlink(path.c_str());
    }
    if (!set) {
        ThrowErrno(message, error);
    }
    Throw(kBadParameter, kUnstorableDate);
}

// Linux keeps the creation time itself; no call sets it.
[[noreturn]] void RefuseCreationDate(const Object& value) {
    const char* message = "Cannot modify file creation date";
    if (dynamic_cast<const Date*>(&value) == nullptr) {
        Throw(kBadParameter, message);
    }
    ThrowErrno(message, ENOTSUP);
}

}  // namespace

std::shared_ptr<Object> file_manager_detail::GetItemDate(const String& path, uint32_t id) {
    return ItemDate(ItemPathBytes(path, "Cannot get item attributes"), id);
}

void file_manager_detail::SetItemDate(const String& path, uint32_t id, const Object& value) {
    if (id == AttributeId::kCreated) {
        RefuseCreationDate(value);
    }
    SetModificationDate(ItemPathBytes(path, "Cannot modify file modification date"), value);
}

uint64_t FileManager::getFreeSpace(const String& path) const {
    const char* message = "Cannot get free disk space";
    // What an unprivileged caller may use: the root's reserve left out.
    struct statvfs volume;
    if (::statvfs(ItemPathBytes(path, message).c_str(), &volume) != 0) {
        ThrowErrno(message, errno);
    }
    return static_cast<uint64_t>(volume.f_bavail) * volume.f_frsize;
}

}  // namespace slib
