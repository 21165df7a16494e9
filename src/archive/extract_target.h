#pragma once
// Where extracted entries go. Paths arrive resolved to components below the extraction folder
// (ResolveInsideFolder), so an implementation only joins them. Failures throw
// -50 "Unable to get zip item". Several files are created, written and committed at once, on
// different threads (each EntryFile stays on one); makeFolder comes from one thread only, but
// may run alongside them.

#include <memory>
#include <string>
#include <vector>

#include "archive/entry_time.h"

namespace archive {

using RelativePath = std::vector<std::u16string>;

// A file being extracted. Unless committed, it is removed again when destroyed, so an entry that
// fails its checks leaves nothing damaged behind (and an older file of that name as it was).
class EntryFile {
  public:
    virtual ~EntryFile() = default;
    virtual void write(const uint8_t* data, size_t length) = 0;
    // Sets the modification time and puts the file in place, replacing an existing file.
    virtual void commit(const EntryTime& time) = 0;
};

class ExtractTarget {
  public:
    virtual ~ExtractTarget() = default;
    // The folder and any missing folders above it; an existing folder is fine.
    virtual void makeFolder(const RelativePath& path) = 0;
    // A new file, creating missing folders above it.
    virtual std::unique_ptr<EntryFile> createFile(const RelativePath& path) = 0;
};

}  // namespace archive
