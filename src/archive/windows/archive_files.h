#pragma once
// The archive layer's byte interfaces over Windows file handles, behind disk_files.h. Paths are
// absolute; the long-path form is added here.

#include <windows.h>

#include <cstdint>
#include <string>

#include "archive/archive_io.h"
#include "archive/disk_files.h"
#include "archive/entry_time.h"
#include "foundation/windows/unique_handles.h"

namespace archive {

// An archive opened for reading; valid() is false when it cannot be opened. Each read names its
// offset (no shared file position), so the unpacking threads may read at once.
class FileSource : public ByteSource {
  public:
    explicit FileSource(const std::u16string& path);
    bool valid() const { return handle_.valid(); }
    uint64_t size() const override { return size_; }
    bool readAt(uint64_t offset, uint8_t* buffer, size_t length) override;

  private:
    slib::UniqueFileHandle handle_;
    uint64_t size_ = 0;
};

// Writes through a handle the caller owns; a failed write is -43 "Unable to add file to zip."
class FileWriter : public ByteWriter {
  public:
    explicit FileWriter(HANDLE handle) : handle_(handle) {}
    void writeAt(uint64_t offset, const uint8_t* data, size_t length) override;

  private:
    HANDLE handle_;
};

// A file being added, read front to back. Opening or reading it fails with
// -43 "Unable to add file to zip."
class FileStream : public SourceFile {
  public:
    explicit FileStream(const std::u16string& path);
    size_t read(uint8_t* buffer, size_t capacity) override;
    uint64_t size() const override { return size_; }
    const EntryTime& time() const override { return time_; }

  private:
    slib::UniqueFileHandle handle_;
    uint64_t size_ = 0;
    EntryTime time_;
};

}  // namespace archive
