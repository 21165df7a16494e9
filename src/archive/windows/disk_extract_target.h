#pragma once
// Extraction onto disk below a base folder. The base folder and any missing folders are created.
// A file becomes visible under its name only once it passed its checks (an existing file of that
// name is replaced then and only then); its modification time is the entry's. Folders keep the
// time of their creation.

#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "archive/extract_target.h"

namespace archive {

class DiskExtractTarget : public ExtractTarget {
  public:
    explicit DiskExtractTarget(std::u16string base);
    void makeFolder(const RelativePath& path) override;
    std::unique_ptr<EntryFile> createFile(const RelativePath& path) override;

  private:
    // The long-path form of the base joined with the first `count` components of `path`.
    std::u16string join(const RelativePath& path, size_t count) const;
    void ensureFolders(const RelativePath& path, size_t count);

    std::u16string base_;
    std::mutex foldersMutex_;  // files are created on several threads
    bool baseReady_ = false;
    std::set<std::u16string> knownFolders_;  // made or found by this extraction
};

}  // namespace archive
