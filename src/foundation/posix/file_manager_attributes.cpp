// Item attributes by id: dates, sizes, free space; owner, group and rights are in
// file_manager_security.cpp.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/number.h"
#include "foundation/posix/local_time.h"
#include "foundation/posix/system_path.h"
#include "foundation/posix/unique_fds.h"

namespace slib {

namespace {

constexpr char kUnstorableDate[] = "The file cannot keep this date";

[[noreturn]] void ThrowUnknownAttribute() {
    Throw(kBadParameter, "Unknown file attribute requested");
}

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

uint32_t RightsArgument(const Object& value) {
    const auto* number = dynamic_cast<const Number*>(&value);
    if (number == nullptr) {
        Throw(kBadParameter, "Wrong parameter");
    }
    return static_cast<uint32_t>(number->asInt64() & 7);
}

}  // namespace

std::shared_ptr<Object> FileManager::getAttribute(const String& path, uint32_t id) const {
    switch (id) {
        case AttributeId::kCreated:
        case AttributeId::kModified:
            return ItemDate(SystemPath(path, "Cannot get item attributes"), id);
        case AttributeId::kSize:
        case AttributeId::kDataSize:
            return std::make_shared<Number>(static_cast<int64_t>(getItemSize(path)));
        case AttributeId::kResourceSize:
            return std::make_shared<Number>(0);
        case AttributeId::kAvailableSpace:
            return std::make_shared<Number>(static_cast<int64_t>(getFreeSpace(path)));
        case AttributeId::kOwner:
            return std::const_pointer_cast<String>(getOwnerName(path));
        case AttributeId::kGroup:
            return std::const_pointer_cast<String>(getGroupName(path));
        case AttributeId::kOwnerRights:
            return std::make_shared<Number>(getOwnerRights(path));
        case AttributeId::kGroupRights:
            return std::make_shared<Number>(getGroupRights(path));
        case AttributeId::kEveryoneRights:
            return std::make_shared<Number>(getEveryoneRights(path));
        default:
            ThrowUnknownAttribute();
    }
}

void FileManager::setAttribute(const String& path, uint32_t id, const Object& value) const {
    switch (id) {
        case AttributeId::kCreated:
            RefuseCreationDate(value);
        case AttributeId::kModified:
            SetModificationDate(SystemPath(path, "Cannot modify file modification date"), value);
            return;
        case AttributeId::kOwner:
            setOwner(path, *value.description());
            return;
        case AttributeId::kGroup:
            setGroup(path, *value.description());
            return;
        case AttributeId::kOwnerRights:
            setOwnerRights(path, RightsArgument(value));
            return;
        case AttributeId::kGroupRights:
            setGroupRights(path, RightsArgument(value));
            return;
        case AttributeId::kEveryoneRights:
            setEveryoneRights(path, RightsArgument(value));
            return;
        default:
            ThrowUnknownAttribute();
    }
}

uint64_t FileManager::getFreeSpace(const String& path) const {
    const char* message = "Cannot get free disk space";
    // What an unprivileged caller may use: the root's reserve left out.
    struct statvfs volume;
    if (::statvfs(SystemPath(path, message).c_str(), &volume) != 0) {
        ThrowErrno(message, errno);
    }
    return static_cast<uint64_t>(volume.f_bavail) * volume.f_frsize;
}

}  // namespace slib
