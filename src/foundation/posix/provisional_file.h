#pragma once
// A new file that is either complete under its name or absent, whatever stops its writing: a
// failure, a throw, or the process killed. Where the file system allows it the file is made
// without any name (O_TMPFILE) and linked under its name only once whole and flushed, so a dead
// process leaves nothing at all. Elsewhere (some network and FUSE file systems) it is written
// under a "~vf-*.partial" name beside its target and removed again unless kept: only a kill can
// leave such a name behind, never a file cut short under a real name.
//
// Everything on Linux that creates a file's contents (writing, replacing, unpacking) creates it
// through this.

#include <fcntl.h>
#include <sys/types.h>

#include <cstdint>
#include <string>

#include "foundation/posix/unique_fds.h"

namespace slib {

class ProvisionalFile {
  public:
    ProvisionalFile() = default;
    // A new file for the folder of `target` (a system path), readable and writable, with the
    // default mode (0666 less the umask). On failure valid() is false and error() holds errno.
    explicit ProvisionalFile(const std::string& target);
    ProvisionalFile(ProvisionalFile&& other) noexcept;
    ProvisionalFile& operator=(ProvisionalFile&& other) noexcept;
    ProvisionalFile(const ProvisionalFile&) = delete;
    ProvisionalFile& operator=(const ProvisionalFile&) = delete;
    ~ProvisionalFile();

    bool valid() const { return fd_.valid(); }
    int error() const { return error_; }
    int fd() const { return fd_.get(); }

    // All of `bytes` at `offset`, or false with error() set (no progress counts as a full disk).
    bool writeAt(uint64_t offset, const uint8_t* bytes, uint64_t size);
    // All of `bytes` after what was written so far.
    bool write(const uint8_t* bytes, uint64_t size);
    // Flushes the file and gives it the name `target`, which must not exist (EEXIST when it
    // does), then closes it. False with error() set and the file still ours, unnamed.
    bool keepAs(const std::string& target) { return keepAt(AT_FDCWD, target, true); }
    // Flushes the file and puts it in the place of `target`, replacing what is there at once
    // (rename): a failure leaves `target` as it was. Then closes it.
    bool replace(const std::string& target) { return replaceAt(AT_FDCWD, target, true); }
    // As keepAs and replace, for `name` in the open folder `folder` (AT_FDCWD: the current one).
    // Without `flush` the file is whole or absent after a kill, but a power cut may cut it short.
    bool keepAt(int folder, const std::string& name, bool flush);
    bool replaceAt(int folder, const std::string& name, bool flush);

  private:
    bool fail(int error);
    // Gives the file a temporary name beside `name` in `folder` if it has none yet.
    bool nameBeside(int folder, const std::string& name);
    bool close(bool flush);
    void discard();

    UniqueFd fd_;
    int nameFolder_ = AT_FDCWD;  // the folder its temporary name is in
    std::string name_;           // the temporary name it has, if any
    uint64_t end_ = 0;           // where write() appends
    int error_ = 0;
};

}  // namespace slib
