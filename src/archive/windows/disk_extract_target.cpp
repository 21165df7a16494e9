#include "archive/windows/disk_extract_target.h"

#include <windows.h>

#include <string>

#include "archive/archive_failures.h"
#include "archive/windows/entry_file_time.h"
#include "foundation/windows/file_manager.h"
#include "foundation/windows/unique_handles.h"

namespace archive {

namespace {

constexpr size_t kLongestPath = 32767;  // characters, long-path prefix and terminator included

const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

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
// committed); when a file of that name exists, under a temporary name beside it that replaces it
// on commit, so a failed entry leaves the older file as it was.
class DiskEntryFile : public EntryFile {
  public:
    DiskEntryFile(const std::u16string& temporary, std::u16string final)
        : final_(std::move(final)) {
        handle_.reset(Create(final_, CREATE_NEW));
        if (!handle_ && GetLastError() == ERROR_FILE_EXISTS) {
            written_ = temporary;
            handle_.reset(Create(written_, CREATE_ALWAYS));
        } else {
            written_ = final_;
        }
        if (!handle_) {
            FailEntryNotExtracted();
        }
    }
    ~DiskEntryFile() override {
        if (!committed_) {
            handle_.reset();
            DeleteFileW(Wide(written_));
        }
    }

    void write(const uint8_t* data, size_t length) override {
        while (length > 0) {
            DWORD written = 0;
            const DWORD request = static_cast<DWORD>(length < (1u << 30) ? length : (1u << 30));
            if (!WriteFile(handle_.get(), data, request, &written, nullptr) || written == 0) {
                FailEntryNotExtracted();
            }
            data += written;
            length -= written;
        }
    }

    void commit(const EntryTime& time) override {
        const std::optional<FILETIME> modified = FileTimeFromEntryTime(time);
        if (modified) {
            SetFileTime(handle_.get(), nullptr, nullptr, &*modified);
        }
        handle_.reset();
        if (written_ != final_) {
            // An older read-only file of the name (from unpacking the same archive before, say)
            // is replaced like any other; the system would refuse the move onto it.
            const DWORD older = GetFileAttributesW(Wide(final_));
            if (older != INVALID_FILE_ATTRIBUTES && (older & FILE_ATTRIBUTE_READONLY) != 0) {
                SetFileAttributesW(Wide(final_), older & ~FILE_ATTRIBUTE_READONLY);
            }
        }
        if (written_ != final_ &&
            !MoveFileExW(Wide(written_), Wide(final_), MOVEFILE_REPLACE_EXISTING)) {
            FailEntryNotExtracted();
        }
        committed_ = true;
        // Read-only last of all: the file could not have been written or replaced afterwards.
        if (time.attributes != 0) {
            SetFileAttributesW(Wide(final_), time.attributes);
        }
    }

  private:
    static HANDLE Create(const std::u16string& path, DWORD disposition) {
        return CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, disposition,
                           FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    }

    std::u16string final_;
    std::u16string written_;
    slib::UniqueFileHandle handle_;
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
    RelativePath temporary(path.begin(), path.end() - 1);
    // Files are written side by side, and the process id keeps two plug-in instances apart.
    const std::string tag = "~vfzip" + std::to_string(GetCurrentProcessId()) + "-" +
                            std::to_string(temporaryCount_++) + ".part";
    temporary.push_back(std::u16string(tag.begin(), tag.end()));
    return std::make_unique<DiskEntryFile>(join(temporary, temporary.size()),
                                           join(path, path.size()));
}

}  // namespace archive
