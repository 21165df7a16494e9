#include "archive/windows/archive_files.h"

#include <algorithm>

#include "archive/archive_failures.h"
#include "archive/windows/entry_file_time.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/replacement_file.h"
#include "foundation/windows/wide_text.h"

namespace archive {

namespace {

using slib::Wide;

// Largest single ReadFile/WriteFile request (their lengths are 32-bit).
constexpr size_t kMaximumRequest = 1u << 30;

OVERLAPPED At(uint64_t offset) {
    OVERLAPPED position = {};
    position.Offset = static_cast<DWORD>(offset);
    position.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return position;
}

bool SameFile(HANDLE a, HANDLE b) {
    BY_HANDLE_FILE_INFORMATION first = {};
    BY_HANDLE_FILE_INFORMATION second = {};
    return GetFileInformationByHandle(a, &first) && GetFileInformationByHandle(b, &second) &&
           first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
           first.nFileIndexHigh == second.nFileIndexHigh &&
           first.nFileIndexLow == second.nFileIndexLow;
}

// The archive written through a ReplacementFile: under its name only once committed.
class NewArchiveFile : public ArchiveOutput {
  public:
    explicit NewArchiveFile(const std::u16string& path) : file_(slib::WithLongPathPrefix(path)) {
        if (!file_.valid()) {
            FailArchiveNotCreated();
        }
    }
    void writeAt(uint64_t offset, const uint8_t* data, size_t length) override {
        FileWriter(file_.handle()).writeAt(offset, data, length);
    }
    void complete() override {
        if (!file_.commit()) {
            if (!file_.strandedOriginal().empty()) {
                FailArchiveNotCreated(file_.strandedOriginal());
            }
            FailArchiveNotCreated();
        }
    }

  private:
    slib::ReplacementFile file_;
};

}  // namespace

std::unique_ptr<ByteSource> OpenArchiveSource(const std::u16string& path) {
    auto source = std::make_unique<FileSource>(path);
    if (!source->valid()) {
        return nullptr;
    }
    return source;
}

std::unique_ptr<SourceFile> OpenSourceFile(const std::u16string& path, bool /*named*/) {
    return std::make_unique<FileStream>(path);
}

void AddItemAttributes(const std::u16string& path, EntryTime& time) {
    time.attributes = KeptAttributes(GetFileAttributesW(Wide(slib::WithLongPathPrefix(path))));
}

std::unique_ptr<ArchiveOutput> CreateArchiveOutput(const std::u16string& path) {
    return std::make_unique<NewArchiveFile>(path);
}

FileSource::FileSource(const std::u16string& path)
    : handle_(slib::OpenShared(slib::WithLongPathPrefix(path), GENERIC_READ, slib::FileUse::kRead,
                               OPEN_EXISTING)) {
    LARGE_INTEGER size = {};
    if (handle_ && !GetFileSizeEx(handle_.get(), &size)) {
        handle_.reset();
    }
    size_ = static_cast<uint64_t>(size.QuadPart);
}

bool FileSource::readAt(uint64_t offset, uint8_t* buffer, size_t length) {
    while (length > 0) {
        const DWORD request = static_cast<DWORD>(std::min(length, kMaximumRequest));
        OVERLAPPED position = At(offset);
        DWORD got = 0;
        if (!ReadFile(handle_.get(), buffer, request, &got, &position) || got == 0) {
            return false;
        }
        buffer += got;
        offset += got;
        length -= got;
    }
    return true;
}

void FileWriter::writeAt(uint64_t offset, const uint8_t* data, size_t length) {
    while (length > 0) {
        const DWORD request = static_cast<DWORD>(std::min(length, kMaximumRequest));
        OVERLAPPED position = At(offset);
        DWORD written = 0;
        if (!WriteFile(handle_, data, request, &written, &position) || written == 0) {
            FailFileNotAdded();
        }
        data += written;
        offset += written;
        length -= written;
    }
}

FileStream::FileStream(const std::u16string& path)
    : handle_(slib::OpenShared(slib::WithLongPathPrefix(path), GENERIC_READ, slib::FileUse::kRead,
                               OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN)) {
    // Size and time only: the full information query costs a volume lookup per file under Wine.
    LARGE_INTEGER size = {};
    FILETIME modified = {};
    if (!handle_ || !GetFileSizeEx(handle_.get(), &size) ||
        !GetFileTime(handle_.get(), nullptr, nullptr, &modified)) {
        FailFileNotAdded();
    }
    size_ = static_cast<uint64_t>(size.QuadPart);
    time_ = EntryTimeFromFileTime(modified);
}

size_t FileStream::read(uint8_t* buffer, size_t capacity) {
    DWORD got = 0;
    if (!ReadFile(handle_.get(), buffer, static_cast<DWORD>(std::min(capacity, kMaximumRequest)),
                  &got, nullptr)) {
        FailFileNotAdded();
    }
    return got;
}

bool IsSameFile(const std::u16string& a, const std::u16string& b) {
    const auto open = [](const std::u16string& path) {
        return slib::UniqueFileHandle(
            CreateFileW(Wide(slib::WithLongPathPrefix(path)), FILE_READ_ATTRIBUTES,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    };
    const slib::UniqueFileHandle first = open(a);
    const slib::UniqueFileHandle second = open(b);
    return first && second && SameFile(first.get(), second.get());
}

}  // namespace archive
