#include "archive/posix/disk_extract_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "archive/archive_failures.h"
#include "archive/disk_files.h"
#include "archive/posix/entry_file_time.h"
#include "foundation/file_name_bytes.h"
#include "foundation/posix/provisional_file.h"
#include "foundation/posix/system_path.h"
#include "foundation/utf_conversion.h"

namespace archive {

namespace {

// Folders held open at once; past this they are let go and checked again when met again.
constexpr size_t kMostHeldFolders = 256;
constexpr mode_t kFolderMode = 0777;  // less the umask

std::u16string Joined(const RelativePath& path, size_t count) {
    std::u16string name;
    for (size_t i = 0; i < count; ++i) {
        name += (i == 0 ? u"" : u"/") + path[i];
    }
    return name;
}

std::string NameBytes(const std::u16string& component) {
    const std::optional<std::string> name = slib::TextToFileNameBytes(component);
    if (!name || name->empty()) {
        FailEntryNotExtracted();
    }
    return *name;
}

[[noreturn]] void FailThroughLink(const std::u16string& entry, const std::u16string& folder) {
    FailEntryRefused(entry, "its folder \"" + slib::Utf16ToUtf8(folder) +
                                "\" is a symbolic link, and nothing is unpacked through a link");
}

// The folder and the folders above it that are missing, following links: the caller named it.
void CreateFolderTree(const std::string& path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0) {
        if (!S_ISDIR(status.st_mode)) {
            FailEntryNotExtracted();
        }
        return;
    }
    const std::string above = slib::FolderOf(path);
    if (above != path && above != "." && above != "/") {
        CreateFolderTree(above);
    }
    if (mkdir(path.c_str(), kFolderMode) != 0 && errno != EEXIST) {
        FailEntryNotExtracted();
    }
}

mode_t CurrentUmask() {
    const mode_t mask = ::umask(022);
    ::umask(mask);
    return mask;
}

// An entry's file: written unnamed for the base folder, and on commit, in archive order, given
// its folders, its mode, its time and its name, or put in the place of an existing file there.
class DiskEntryFile : public EntryFile {
  public:
    DiskEntryFile(DiskExtractTarget& target, RelativePath path)
        : target_(target), path_(std::move(path)), file_(target_.base() + "/x") {
        if (!file_.valid()) {
            FailEntryNotExtracted();
        }
    }

    void write(const uint8_t* data, size_t length) override {
        if (!file_.write(data, length)) {
            FailEntryNotExtracted();
        }
    }

    void commit(const EntryTime& time) override {
        const int folder = target_.ensureFolders(path_, path_.size() - 1);
        const std::string name = NameBytes(path_.back());
        if (fchmod(file_.fd(), UnpackedFileMode(time, target_.umask())) != 0) {
            FailEntryNotExtracted();
        }
        if (const std::optional<timespec> modified = ModificationFromEntryTime(time)) {
            const timespec times[2] = {{0, UTIME_OMIT}, *modified};
            futimens(file_.fd(), times);
        }
        // Unpacked files are whole or absent after a kill; flushing each would cost more than
        // the unpacking itself, as on every other unpacking tool.
        if (file_.keepAt(folder, name, false)) {
            return;
        }
        if (file_.error() != EEXIST) {
            FailEntryNotExtracted();
        }
        replace(folder, name);
    }

  private:
    // Over an existing item: a link is never written through nor replaced, a folder is no file,
    // and a file we may not write is refused, as every replace refuses one, and kept.
    void replace(int folder, const std::string& name) {
        struct stat status = {};
        if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            FailEntryNotExtracted();
        }
        if (S_ISLNK(status.st_mode)) {
            FailEntryRefused(Joined(path_, path_.size()),
                             "a symbolic link is in its place, and nothing is unpacked through a "
                             "link");
        }
        if (!S_ISREG(status.st_mode) ||
            faccessat(folder, name.c_str(), W_OK, AT_EACCESS | AT_SYMLINK_NOFOLLOW) != 0) {
            FailEntryNotExtracted();
        }
        if (!file_.replaceAt(folder, name, false)) {
            FailEntryNotExtracted();
        }
    }

    DiskExtractTarget& target_;
    RelativePath path_;
    slib::ProvisionalFile file_;
};

}  // namespace

std::unique_ptr<ExtractTarget> OpenDiskExtractTarget(std::u16string base) {
    return std::make_unique<DiskExtractTarget>(std::move(base));
}

DiskExtractTarget::DiskExtractTarget(std::u16string base)
    : base_(std::move(base)), umask_(CurrentUmask()) {
    while (base_.size() > 1 && base_.back() == u'/') {
        base_.pop_back();
    }
    const std::optional<std::string> bytes = slib::SystemPath(base_);
    if (bytes) {
        baseBytes_ = *bytes;
    }
}

void DiskExtractTarget::ensureBase() {
    const std::lock_guard<std::mutex> lock(baseMutex_);
    if (baseFd_) {
        return;
    }
    if (baseBytes_.empty()) {
        FailEntryNotExtracted();
    }
    CreateFolderTree(baseBytes_);
    baseFd_.reset(open(baseBytes_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!baseFd_) {
        FailEntryNotExtracted();
    }
}

int DiskExtractTarget::ensureFolders(const RelativePath& path, size_t count) {
    ensureBase();
    int parent = baseFd_.get();
    for (size_t i = 1; i <= count; ++i) {
        std::u16string key = Joined(path, i);
        if (const auto held = heldFolders_.find(key); held != heldFolders_.end()) {
            parent = held->second.get();
            continue;
        }
        if (heldFolders_.size() >= kMostHeldFolders) {
            // Let go, then every folder of this path is checked and held anew.
            heldFolders_.clear();
            parent = baseFd_.get();
            i = 0;
            continue;
        }
        const std::string name = NameBytes(path[i - 1]);
        mkdirat(parent, name.c_str(), kFolderMode);  // made unless there; what is there is checked
        slib::UniqueFd folder(
            openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!folder) {
            struct stat status = {};
            if (fstatat(parent, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                S_ISLNK(status.st_mode)) {
                FailThroughLink(Joined(path, path.size()), key);
            }
            FailEntryNotExtracted();
        }
        parent = folder.get();
        heldFolders_.emplace(std::move(key), std::move(folder));
    }
    return parent;
}

void DiskExtractTarget::makeFolder(const RelativePath& path) {
    ensureFolders(path, path.size());
}

std::unique_ptr<EntryFile> DiskExtractTarget::createFile(const RelativePath& path) {
    ensureBase();
    return std::make_unique<DiskEntryFile>(*this, path);
}

}  // namespace archive
