#include "archive/windows/disk_extract_target.h"

#include <windows.h>

#include <memory>
#include <string>

#include "archive/archive_failures.h"
#include "archive/disk_files.h"
#include "archive/windows/entry_file_time.h"
#include "foundation/file_manager.h"
#include "foundation/path_normal_form.h"
#include "foundation/utf_conversion.h"
#include "foundation/windows/item_identity.h"
#include "foundation/windows/link_entries.h"
#include "foundation/windows/provisional_file.h"
#include "foundation/windows/replacement_file.h"
#include "foundation/windows/wide_text.h"

namespace archive {

namespace {

constexpr size_t kLongestPath = 32767;  // characters, long-path prefix and terminator included
// Folders held open at once; past this they are let go and checked again when met again.
constexpr size_t kMostHeldFolders = 256;

using slib::Wide;

bool IsFolder(const std::u16string& path) {
    const DWORD attributes = GetFileAttributesW(Wide(path));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Creates `path` (long-path form) unless it is a folder already.
void CreateFolder(const std::u16string& path) {
    if (!CreateDirectoryW(Wide(path), nullptr) && !IsFolder(path)) {
        FailEntryNotExtracted();
    }
}

// The base folder and the folders above it that are missing.
void CreateFolderTree(const std::u16string& path) {
    if (IsFolder(slib::WithLongPathPrefix(path))) {
        return;
    }
    const size_t separator = path.find_last_of(u'\\');
    if (separator != std::u16string::npos && separator > 0 && path[separator - 1] != u':' &&
        path[separator - 1] != u'\\') {
        CreateFolderTree(path.substr(0, separator));
    }
    CreateFolder(slib::WithLongPathPrefix(path));
}

std::u16string Joined(const RelativePath& path, size_t count) {
    std::u16string name;
    for (size_t i = 0; i < count; ++i) {
        name += (i == 0 ? u"" : u"/") + path[i];
    }
    return name;
}

// The folder itself, never what a link there leads to, held without delete sharing so that
// nobody can rename or remove it while entries go into it. One that someone holds for that
// already is checked all the same, but not held.
slib::UniqueFileHandle OpenFolderItself(const std::u16string& path) {
    slib::UniqueFileHandle folder(CreateFileW(
        Wide(path), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
        OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!folder && GetLastError() == ERROR_SHARING_VIOLATION) {
        folder = slib::OpenItemItself(path, FILE_READ_ATTRIBUTES);
    }
    return folder;
}

bool IsFolder(HANDLE item) {
    FILE_BASIC_INFO basic = {};
    return GetFileInformationByHandleEx(item, FileBasicInfo, &basic, sizeof basic) &&
           (basic.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

[[noreturn]] void FailThroughLink(const std::u16string& entry, const std::u16string& folder) {
    FailEntryRefused(entry, "its folder \"" + slib::Utf16ToUtf8(folder) +
                                "\" is a link (a junction or symbolic link), and nothing is "
                                "unpacked through a link");
}

bool IsTaken(DWORD error) {
    return error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS;
}

// An entry's file: written under a temporary name in the base folder, and on commit, in archive
// order, given its folders and its name, or put in the place of an existing file of that name.
class DiskEntryFile : public EntryFile {
  public:
    DiskEntryFile(DiskExtractTarget& target, RelativePath path)
        : target_(target), path_(std::move(path)) {
        // A leftover of a power cut may hold a name: a few fresh ones are tried.
        for (int attempt = 0; attempt < 4 && !file_.valid(); ++attempt) {
            file_ =
                slib::ProvisionalFile(target_.temporaryName(), FILE_SHARE_READ | FILE_SHARE_DELETE,
                                      FILE_FLAG_SEQUENTIAL_SCAN);
            if (!file_.valid() && file_.error() != ERROR_FILE_EXISTS) {
                break;
            }
        }
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
        target_.ensureFolders(path_, path_.size() - 1);
        const std::u16string final = target_.join(path_, path_.size());
        const std::optional<FILETIME> modified = FileTimeFromEntryTime(time);
        if (modified) {
            SetFileTime(file_.handle(), nullptr, nullptr, &*modified);
        }
        if (!file_.keepAs(final)) {
            if (!IsTaken(file_.error())) {
                FailEntryNotExtracted();
            }
            replace(final);
        }
        // Read-only last of all: nothing could be changed afterwards.
        if (time.attributes != 0) {
            SetFileAttributesW(Wide(final), time.attributes);
        }
    }

  private:
    // Over an existing item: a link is never written through nor replaced, a folder is no file,
    // and a read-only file is refused, as every replace refuses one, and kept.
    void replace(const std::u16string& final) {
        const std::u16string entry = Joined(path_, path_.size());
        {
            const slib::UniqueFileHandle item = slib::OpenItemItself(final, FILE_READ_ATTRIBUTES);
            if (item && slib::IsLinkItem(item.get(), final)) {
                FailEntryRefused(entry,
                                 "a link (a junction or symbolic link) is in its place, and "
                                 "nothing is unpacked through a link");
            }
            if (!item || IsFolder(item.get())) {
                FailEntryNotExtracted();
            }
        }
        const DWORD attributes = GetFileAttributesW(Wide(final));
        if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
            FailEntryNotExtracted();
        }
        const slib::SwapOutcome outcome = slib::ReplaceWith(file_, final);
        if (outcome.originalStranded) {
            FailEntryRefused(entry, "the file it replaces could not be put back and is kept as \"" +
                                        slib::Utf16ToUtf8(slib::NormalizePath(outcome.backup)) +
                                        "\"");
        }
        if (!outcome.swapped) {
            FailEntryNotExtracted();
        }
    }

    DiskExtractTarget& target_;
    RelativePath path_;
    slib::ProvisionalFile file_;
};

}  // namespace

DiskExtractTarget::DiskExtractTarget(std::u16string base) : base_(std::move(base)) {
    while (base_.size() > 1 && base_.back() == u'\\' && base_[base_.size() - 2] != u':') {
        base_.pop_back();
    }
}

std::u16string DiskExtractTarget::join(const RelativePath& path, size_t count) const {
    std::u16string joined = base_;
    for (size_t i = 0; i < count; ++i) {
        if (joined.empty() || joined.back() != u'\\') {
            joined.push_back(u'\\');
        }
        joined += path[i];
    }
    std::u16string full = slib::WithLongPathPrefix(joined);
    if (full.size() >= kLongestPath) {
        FailEntryRefused(Joined(path, count), "the path it would have is longer than the " +
                                                  std::to_string(kLongestPath) +
                                                  " characters Windows allows");
    }
    return full;
}

void DiskExtractTarget::ensureBase() {
    const std::lock_guard<std::mutex> lock(baseMutex_);
    if (!baseReady_) {
        CreateFolderTree(base_);
        baseReady_ = true;
    }
}

void DiskExtractTarget::ensureFolders(const RelativePath& path, size_t count) {
    ensureBase();
    for (size_t i = 1; i <= count; ++i) {
        std::u16string folder = join(path, i);
        if (heldFolders_.count(folder) != 0) {
            continue;
        }
        if (heldFolders_.size() >= kMostHeldFolders) {
            // Let go, then every folder of this path is checked and held anew.
            heldFolders_.clear();
            i = 0;
            continue;
        }
        CreateDirectoryW(Wide(folder), nullptr);  // made unless there; what is there is checked
        slib::UniqueFileHandle held = OpenFolderItself(folder);
        if (!held) {
            FailEntryNotExtracted();
        }
        if (slib::IsLinkItem(held.get(), folder)) {
            FailThroughLink(Joined(path, path.size()), Joined(path, i));
        }
        if (!IsFolder(held.get())) {
            FailEntryNotExtracted();
        }
        heldFolders_.emplace(std::move(folder), std::move(held));
    }
}

void DiskExtractTarget::makeFolder(const RelativePath& path) {
    ensureFolders(path, path.size());
}

std::u16string DiskExtractTarget::temporaryName() const {
    std::u16string folder = join(RelativePath(), 0);
    if (folder.back() != u'\\') {
        folder.push_back(u'\\');
    }
    return slib::TemporaryNameBeside(folder + u"x");
}

std::unique_ptr<ExtractTarget> OpenDiskExtractTarget(std::u16string base) {
    return std::make_unique<DiskExtractTarget>(std::move(base));
}

std::unique_ptr<EntryFile> DiskExtractTarget::createFile(const RelativePath& path) {
    ensureBase();
    join(path, path.size());  // a path too long is refused before anything is written
    return std::make_unique<DiskEntryFile>(*this, path);
}

}  // namespace archive
