#pragma once
// Where extracted entries go. Paths arrive resolved to components below the extraction folder
// (ResolveInsideFolder), so an implementation only joins them. Failures throw
// -50 "Unable to get zip item". Several files are created and written at once, on different
// threads (each EntryFile stays on one); commits and folders come one at a time, in archive
// order, so each name meets what the entries before it left, but not always on the same thread.

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
    // Called in archive order, one at a time.
    virtual void commit(const EntryTime& time) = 0;
};

class ExtractTarget {
  public:
    virtual ~ExtractTarget() = default;
    // The folder and any missing folders above it; an existing folder is fine.
    virtual void makeFolder(const RelativePath& path) = 0;
    // A new file for `path`, in its place only once committed, with missing folders above it
    // then; an existing file of that name is replaced then.
    virtual std::unique_ptr<EntryFile> createFile(const RelativePath& path) = 0;
};

}  // namespace archive
