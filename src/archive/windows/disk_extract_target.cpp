#include "archive/windows/disk_extract_target.h"

#include <windows.h>

#include <memory>
#include <string>

#include "archive/archive_failures.h"
#include "archive/windows/entry_file_time.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/replacement_file.h"
#include "foundation/windows/unique_handles.h"
#include "foundation/windows/wide_text.h"

namespace archive {

namespace {

constexpr size_t kLongestPath = 32767;  // characters, long-path prefix and terminator included

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

// Written straight under its final name when nothing is there yet (removed again unless
// committed); when a file of that name exists, as its replacement (ReplacementFile), swapped in on
// commit, so a failed entry leaves the older file as it was.
class DiskEntryFile : public EntryFile {
  public:
    explicit DiskEntryFile(std::u16string final) : final_(std::move(final)) {
        handle_ = slib::OpenShared(final_, GENERIC_WRITE, slib::FileUse::kWrite, CREATE_NEW,
                                   FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN);
        if (!handle_ && GetLastError() == ERROR_FILE_EXISTS) {
            // A read-only file is refused here, as every replace refuses one, and kept.
            replacement_ = std::make_unique<slib::ReplacementFile>(final_);
            if (!replacement_->valid()) {
                FailEntryNotExtracted();
            }
        } else if (!handle_) {
            FailEntryNotExtracted();
        }
    }
    ~DiskEntryFile() override {
        if (!committed_ && handle_) {
            handle_.reset();
            DeleteFileW(Wide(final_));
        }
    }

    void write(const uint8_t* data, size_t length) override {
        while (length > 0) {
            DWORD written = 0;
            const DWORD request = static_cast<DWORD>(length < (1u << 30) ? length : (1u << 30));
            if (!WriteFile(handle(), data, request, &written, nullptr) || written == 0) {
                FailEntryNotExtracted();
            }
            data += written;
            length -= written;
        }
    }

    void commit(const EntryTime& time) override {
        const std::optional<FILETIME> modified = FileTimeFromEntryTime(time);
        if (modified) {
            SetFileTime(handle(), nullptr, nullptr, &*modified);
        }
        if (replacement_ && !replacement_->commit()) {
            FailEntryNotExtracted();
        }
        handle_.reset();
        committed_ = true;
        // Read-only last of all: the file could not have been written or replaced afterwards.
        if (time.attributes != 0) {
            SetFileAttributesW(Wide(final_), time.attributes);
        }
    }

  private:
    HANDLE handle() const { return replacement_ ? replacement_->handle() : handle_.get(); }

    std::u16string final_;
    slib::UniqueFileHandle handle_;                       // the new file under its final name
    std::unique_ptr<slib::ReplacementFile> replacement_;  // or the one replacing a file
    bool committed_ = false;
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
        std::u16string name;
        for (size_t i = 0; i < count; ++i) {
            name += (i == 0 ? u"" : u"/") + path[i];
        }
        FailEntryRefused(name, "the path it would have is longer than the " +
                                   std::to_string(kLongestPath) + " characters Windows allows");
    }
    return full;
}

void DiskExtractTarget::ensureFolders(const RelativePath& path, size_t count) {
    const std::lock_guard<std::mutex> lock(foldersMutex_);
    if (!baseReady_) {
        CreateFolderTree(base_);
        baseReady_ = true;
    }
    for (size_t i = 1; i <= count; ++i) {
        std::u16string folder = join(path, i);
        if (knownFolders_.count(folder) == 0) {
            CreateFolder(folder);
            knownFolders_.insert(std::move(folder));
        }
    }
}

void DiskExtractTarget::makeFolder(const RelativePath& path) {
    ensureFolders(path, path.size());
}

std::unique_ptr<EntryFile> DiskExtractTarget::createFile(const RelativePath& path) {
    ensureFolders(path, path.size() - 1);
    return std::make_unique<DiskEntryFile>(join(path, path.size()));
}

}  // namespace archive
