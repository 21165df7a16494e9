#pragma once
// Extraction onto disk below a base folder, on Linux. The base folder and any missing folders
// above it are created; the base itself may be a symbolic link (the caller chose it), but nothing
// below it is written through one: every folder an entry passes through is made and opened from
// the folder holding it (mkdirat, openat with O_NOFOLLOW) and held open, and a symbolic link
// there, or in a file's place, fails that entry. A file is written as an unnamed ProvisionalFile
// in the base folder, so a file cut short never has a real name, even if the process dies; on
// commit it gets the entry's mode (never set-id or sticky bits) and modification time, then its
// name (an existing file of that name is replaced then and only then). Folders get the default
// mode and keep the time of their creation. An entry stored as a symbolic link becomes a plain
// file holding the link's text: no link is ever created.

#include <sys/types.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "archive/extract_target.h"
#include "foundation/posix/unique_fds.h"

namespace archive {

class DiskExtractTarget : public ExtractTarget {
  public:
    explicit DiskExtractTarget(std::u16string base);
    void makeFolder(const RelativePath& path) override;
    std::unique_ptr<EntryFile> createFile(const RelativePath& path) override;

    // The folders of `path` up to its first `count` components, made where missing, each checked
    // to be no link and held; the last one's descriptor. Throws as makeFolder does.
    int ensureFolders(const RelativePath& path, size_t count);
    // The base folder's system path, for the files being written.
    const std::string& base() const { return baseBytes_; }
    mode_t umask() const { return umask_; }

  private:
    void ensureBase();

    std::u16string base_;
    std::string baseBytes_;
    mode_t umask_;
    std::mutex baseMutex_;  // files are created on several threads
    slib::UniqueFd baseFd_;
    // The folders below the base made or checked by this extraction, each held open so that
    // entries go into the folder checked, whatever is renamed meanwhile. Used only in archive
    // order (makeFolder, commits).
    std::map<std::u16string, slib::UniqueFd> heldFolders_;
};

}  // namespace archive
