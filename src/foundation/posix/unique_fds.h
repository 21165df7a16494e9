#pragma once
// The POSIX resource kinds the plug-in owns, each an slib::UniqueResource, beside the Windows
// alias block (windows/unique_handles.h). A descriptor being written is not closed silently:
// its writer calls fsync and close itself and checks both before a rename commits it; these
// owners' close is for read paths and failure paths, and keeps the caller's errno.

#include <dirent.h>
#include <unistd.h>

#include <cerrno>

#include "foundation/unique_resource.h"

namespace slib {

inline int NoFd() {
    return -1;
}
inline void CloseFd(int fd) {
    const int saved = errno;
    ::close(fd);
    errno = saved;
}
inline void CloseDir(DIR* dir) {
    const int saved = errno;
    ::closedir(dir);
    errno = saved;
}

// A file descriptor (open, openat, O_PATH ones included); -1 is empty, 0 a real descriptor.
using UniqueFd = UniqueResource<int, &CloseFd, &NoFd>;
// A directory stream (fdopendir); it owns the descriptor it was opened on.
using UniqueDir = UniqueResource<DIR*, &CloseDir>;

}  // namespace slib
