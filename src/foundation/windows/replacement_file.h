#pragma once
// A file's new contents, written beside it under a temporary name and put in its place only once
// complete, so a failure at any point (bad data, a full disk, a lock, the process killed) leaves
// the file that was there byte for byte as it was. An existing file is swapped with ReplaceFileW,
// which keeps its attributes, security, streams and creation date (and takes hidden and system
// files, which CREATE_ALWAYS refuses); a new one is moved into place.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <cstdint>
#include <string>

#include "foundation/windows/unique_handles.h"

namespace slib {

class ReplacementFile {
  public:
    // Starts the temporary file in the folder of `systemPath` (the long form the system gets).
    // A read-only target is refused up front (ERROR_ACCESS_DENIED). On failure valid() is false
    // and error() tells why.
    explicit ReplacementFile(const std::u16string& systemPath);
    // Removes the temporary file unless committed.
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    bool valid() const { return handle_.valid(); }
    DWORD error() const { return error_; }
    // Open for writing (and reading), shared with readers only.
    HANDLE handle() const { return handle_.get(); }

    // All of `bytes`, or false with error() set (a short write counts as a full disk).
    bool write(const uint8_t* bytes, uint64_t size);
    // Flushes, closes and swaps the file in. False with error() set, the target untouched.
    bool commit();

    // Whether a file name is one of ours: "~vf-<process>-<number>.partial".
    static bool IsTemporaryName(const std::u16string& name);

  private:
    bool fail(DWORD error);
    bool swapIn();

    std::u16string target_;
    std::u16string temporary_;
    UniqueFileHandle handle_;
    DWORD error_ = 0;
    DWORD kept_ = 0;  // the original's attributes the new file takes over
    bool committed_ = false;
};

// Replaces (or creates) the file at `path` (plain form) with `size` bytes; throws `message` with
// the system's error on failure, the file at `path` unchanged.
void ReplaceFileContents(const std::u16string& path, const uint8_t* bytes, uint64_t size,
                         const char* message);

}  // namespace slib
