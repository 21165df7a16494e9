#pragma once
// Extraction onto disk below a base folder. The base folder and any missing folders are created;
// the base itself may be a link (the caller chose it), but nothing below it is written through
// one: every folder an entry passes through is opened itself and held, and a junction or
// symbolic link there, or in a file's place, fails that entry. A file is written under a
// temporary name in the base folder as a ProvisionalFile, so a file cut short never has a real
// name, even if the process dies; on commit it gets the entry's modification time, then its name
// (an existing file of that name is replaced then and only then). Folders keep the time of their
// creation.

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "archive/extract_target.h"
#include "foundation/windows/unique_handles.h"

namespace archive {

class DiskExtractTarget : public ExtractTarget {
  public:
    explicit DiskExtractTarget(std::u16string base);
    void makeFolder(const RelativePath& path) override;
    std::unique_ptr<EntryFile> createFile(const RelativePath& path) override;

    // The folders of `path` up to its first `count` components, made where missing, each checked
    // to be no link and held. Throws as makeFolder does.
    void ensureFolders(const RelativePath& path, size_t count);
    // The long-path form of the base joined with the first `count` components of `path`.
    std::u16string join(const RelativePath& path, size_t count) const;
    // A fresh temporary name in the base folder, for a file being written.
    std::u16string temporaryName() const;

  private:
    void ensureBase();

    std::u16string base_;
    std::mutex baseMutex_;  // files are created on several threads
    bool baseReady_ = false;
    // The folders below the base made or checked by this extraction, each held open so that it
    // cannot be swapped for a link meanwhile. Used only in archive order (makeFolder, commits).
    std::map<std::u16string, slib::UniqueFileHandle> heldFolders_;
};

}  // namespace archive
