#include "foundation/posix/replacement_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "foundation/exception.h"
#include "foundation/posix/system_path.h"

namespace slib {

namespace {

// Set-user-id, set-group-id and sticky bits are never handed on to new contents.
constexpr mode_t kKeptModeBits = 0777;

}  // namespace

ReplacementFile::ReplacementFile(std::string target) : target_(std::move(target)) {
    if (const int error = refusal(); error != 0) {
        fail(error);
        return;
    }
    file_ = ProvisionalFile(target_);
    if (!file_.valid()) {
        fail(file_.error());
    }
}

int ReplacementFile::refusal() {
    struct stat item = {};
    if (lstat(target_.c_str(), &item) != 0) {
        original_.reset();
        return errno == ENOENT ? 0 : errno;
    }
    if (S_ISLNK(item.st_mode)) {
        return ELOOP;
    }
    if (S_ISDIR(item.st_mode)) {
        return EISDIR;
    }
    if (faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS | AT_SYMLINK_NOFOLLOW) != 0) {
        return errno;
    }
    original_ = item;
    return 0;
}

bool ReplacementFile::fail(int error) {
    error_ = error == 0 ? EIO : error;
    return false;
}

bool ReplacementFile::write(const uint8_t* bytes, uint64_t size) {
    return file_.write(bytes, size) || fail(file_.error());
}

bool ReplacementFile::commit() {
    if (!file_.valid()) {
        return fail(error_);
    }
    // Checked again: what is there now is what gets replaced.
    if (const int error = refusal(); error != 0) {
        return fail(error);
    }
    if (!original_) {
        if (file_.keepAs(target_)) {
            return true;
        }
        if (file_.error() != EEXIST) {
            return fail(file_.error());
        }
        // A file came meanwhile: refused as the constructor refuses it, else replaced.
        if (const int error = refusal(); error != 0) {
            return fail(error);
        }
    }
    if (original_) {
        if (fchmod(file_.fd(), original_->st_mode & kKeptModeBits) != 0) {
            return fail(errno);
        }
        // Only the owner or root may hand a file on; a group we belong to is kept at least.
        if (fchown(file_.fd(), original_->st_uid, original_->st_gid) != 0) {
            (void)fchown(file_.fd(), static_cast<uid_t>(-1), original_->st_gid);
        }
    }
    return file_.replace(target_) || fail(file_.error());
}

void ReplaceFileContents(const std::u16string& path, const uint8_t* bytes, uint64_t size,
                         const char* message) {
    const std::optional<std::string> target = SystemPath(path);
    if (!target) {
        ThrowErrno(message, EINVAL);
    }
    ReplacementFile file(*target);
    if (!file.valid() || !file.write(bytes, size) || !file.commit()) {
        ThrowErrno(message, file.error());
    }
}

}  // namespace slib
