#pragma once
// What packing and unpacking need of the disk, each system's body behind one interface: the
// archive read or written, the files added, the folder unpacked into. Paths are absolute, in the
// system's own style; no system type shows here.

#include <cstdint>
#include <memory>
#include <string>

#include "archive/archive_io.h"
#include "archive/entry_time.h"
#include "archive/extract_target.h"

namespace archive {

// An archive opened for reading, or null when it cannot be opened. Each read names its offset,
// so the unpacking threads may read at once.
std::unique_ptr<ByteSource> OpenArchiveSource(const std::u16string& path);

// A file being added, read front to back, with the time and attributes it is stored with.
class SourceFile : public ByteStream {
  public:
    virtual uint64_t size() const = 0;
    virtual const EntryTime& time() const = 0;
};
// Opening or reading it fails with -43 "Unable to add file to zip.". `named`: the path is the one
// the caller gave, and a link there leads to the file; a file the walk found is never read
// through a symbolic link where the system can tell one (Linux), even one put in its place since.
std::unique_ptr<SourceFile> OpenSourceFile(const std::u16string& path, bool named = false);

// The attributes a single file given to pack is stored with (the walk gives those of the files
// in a folder).
void AddItemAttributes(const std::u16string& path, EntryTime& time);

// True when both paths name one existing file (through links and different spellings too).
bool IsSameFile(const std::u16string& a, const std::u16string& b);

// The archive being written: under its name only once complete (or in the place of an older
// file of that name), so a failed or killed compression leaves no archive cut short and an older
// file as it was. Creating it fails with -38 "Unable to open zip.", a failed write with -43
// "Unable to add file to zip.".
class ArchiveOutput : public ByteWriter {
  public:
    // Puts the archive in its place; -38 "Unable to open zip." when it cannot.
    virtual void complete() = 0;
};
std::unique_ptr<ArchiveOutput> CreateArchiveOutput(const std::u16string& path);

// Extraction below the folder `base` on disk (see the system's disk_extract_target.h).
std::unique_ptr<ExtractTarget> OpenDiskExtractTarget(std::u16string base);

}  // namespace archive
