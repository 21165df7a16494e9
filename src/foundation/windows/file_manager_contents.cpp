// Reading and writing file contents at a position, in chunks, with every system call checked.

#include <windows.h>

#include <algorithm>
#include <vector>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_contents_rules.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/provisional_file.h"
#include "foundation/windows/replacement_file.h"

namespace slib {

using file_manager_detail::Wide;

namespace {

// Large enough that the per-call cost vanishes, small enough for any system's I/O limits.
constexpr DWORD kChunk = 4u << 20;

void MoveTo(HANDLE file, int64_t offset, const char* message) {
    LARGE_INTEGER distance;
    distance.QuadPart = offset;
    if (!SetFilePointerEx(file, distance, nullptr, FILE_BEGIN)) {
        ThrowLastError(message, GetLastError());
    }
}

// The file opened for reading, or no handle when there is no file to read: a missing item or a
// folder.
UniqueFileHandle OpenForReading(const String& path) {
    const std::u16string systemPath = WithLongPathPrefix(path.units());
    UniqueFileHandle file = OpenShared(systemPath, GENERIC_READ, FileUse::kRead, OPEN_EXISTING);
    if (file.valid()) {
        return file;
    }
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
        return file;
    }
    const DWORD attributes = GetFileAttributesW(Wide(systemPath));
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return file;
    }
    Throw(kPermissionDenied, "Insufficent file permissions");
}

// Up to `limit` bytes from the file's current position to its end, however large the system
// said it was: a size can be stale (an SMB client's cache) or too small (a file the system
// generates as it is read).
std::vector<uint8_t> ReadUpTo(HANDLE file, uint64_t limit, uint64_t expected) {
    std::vector<uint8_t> bytes;
    bytes.reserve(static_cast<size_t>(std::min(limit, expected)));
    while (bytes.size() < limit) {
        const size_t done = bytes.size();
        const DWORD chunk = static_cast<DWORD>(std::min<uint64_t>(limit - done, kChunk));
        bytes.resize(done + chunk);
        DWORD read = 0;
        if (!ReadFile(file, bytes.data() + done, chunk, &read, nullptr)) {
            ThrowLastError("Cannot read file", GetLastError());
        }
        bytes.resize(done + read);
        if (read == 0) {
            break;
        }
        if (bytes.size() > kLargestRead) {
            ThrowTooLargeToRead();
        }
    }
    return bytes;
}

// All bytes or an exception: a short write without a system error counts as a full disk.
void WriteAll(HANDLE file, const Data& data) {
    const uint8_t* bytes = data.bytes().data();
    uint64_t left = data.size();
    while (left > 0) {
        const DWORD chunk = static_cast<DWORD>(std::min<uint64_t>(left, kChunk));
        DWORD written = 0;
        if (!WriteFile(file, bytes, chunk, &written, nullptr)) {
            ThrowLastError("Cannot write to file", GetLastError());
        }
        if (written != chunk) {
            ThrowLastError("Cannot write to file", ERROR_DISK_FULL);
        }
        bytes += written;
        left -= written;
    }
}

// A new file holding `data` from byte `at` on (zero bytes before it), whole under its name or
// absent, whatever stops the writing.
void WriteNewFileAt(const String& path, const Data& data, int64_t at) {
    const std::u16string target = WithLongPathPrefix(path.units());
    if (GetFileAttributesW(Wide(target)) != INVALID_FILE_ATTRIBUTES) {
        ThrowLastError("Cannot open file for writing", ERROR_FILE_EXISTS);
    }
    ProvisionalFile file(TemporaryNameBeside(target), FILE_SHARE_READ);
    if (!file.valid()) {
        ThrowLastError("Cannot open file for writing", file.error());
    }
    if (at != 0) {
        MoveTo(file.handle(), at, "Cannot write to file");
    }
    WriteAll(file.handle(), data);
    if (!file.keepAs(target)) {
        const DWORD error = file.error();
        ThrowLastError(error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS
                           ? "Cannot open file for writing"
                           : "Cannot write to file",
                       error);
    }
}

}  // namespace

std::shared_ptr<const Data> FileManager::readFile(const String& path, FilePosition position,
                                                  uint64_t length) const {
    const UniqueFileHandle file = OpenForReading(path);
    if (!file.valid()) {
        return std::make_shared<Data>();
    }
    // The size of what was opened, never of the path: for a file symbolic link the path's own
    // attributes describe the link.
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.get(), &size)) {
        ThrowLastError("Cannot read file", GetLastError());
    }
    const auto fileSize = static_cast<uint64_t>(size.QuadPart);
    const auto start = static_cast<uint64_t>(AbsoluteOffset(position, fileSize, true));
    const uint64_t expected = start < fileSize ? std::min(length, fileSize - start) : 0;
    if (expected > kLargestRead) {
        ThrowTooLargeToRead();
    }
    if (length == 0) {
        return std::make_shared<Data>();
    }
    MoveTo(file.get(), static_cast<int64_t>(start), "Cannot read file");
    return std::make_shared<Data>(ReadUpTo(file.get(), length, expected));
}

uint64_t FileManager::writeFile(const String& path, const Data& data, FilePosition position) const {
    const UniqueFileHandle file =
        OpenShared(WithLongPathPrefix(path.units()), GENERIC_WRITE, FileUse::kWrite, OPEN_EXISTING);
    if (!file.valid()) {
        const DWORD error = GetLastError();
        if (error != ERROR_FILE_NOT_FOUND) {
            ThrowLastError("Cannot open file for writing", error);
        }
        // Not there yet: made whole or not at all, the bytes where a new file puts them.
        WriteNewFileAt(path, data, AbsoluteOffset(position, 0, false));
        return data.size();
    }
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.get(), &size)) {
        ThrowLastError("Cannot write to file", GetLastError());
    }
    MoveTo(file.get(), AbsoluteOffset(position, static_cast<uint64_t>(size.QuadPart), false),
           "Cannot write to file");
    WriteAll(file.get(), data);
    return data.size();
}

}  // namespace slib
