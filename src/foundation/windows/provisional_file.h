#pragma once
// A new file that is either complete under its name or absent, whatever stops its writing: a
// failure, a throw, or the process killed. It is written under a temporary name, opened with
// FILE_FLAG_DELETE_ON_CLOSE from the instant it exists, so the system removes it when its handle
// closes, the handles of a dead process included. Once complete it gets its name as a second link
// (CreateHardLinkW), whole at once, and closing the handle removes the temporary one: at no
// instant is there a file cut short under a real name, nor, after a kill, anything of ours. Access
// asked for at creation is granted whatever the folder's rules, and the handle's deletion needs
// no more, so this works where the user may create files but not delete them.
//
// A volume without hard links (FAT, exFAT, some network shares) gets a copy instead: a second
// temporary file marked for deletion (FileDispositionInfo) as soon as it is made, filled, then
// renamed to the name through its handle. Only there can a kill at the instant between making and
// marking it leave an empty temporary file beside the target.
//
// Everything that creates a file's contents (unpacking, copying, writing, converting, packing)
// creates it through this.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <cstdint>
#include <string>

#include "foundation/windows/unique_handles.h"

namespace slib {

class ProvisionalFile {
  public:
    ProvisionalFile() = default;
    // Creates the temporary file `systemPath` (the long form; CREATE_NEW: an existing item fails)
    // for reading and writing. `share` is what others may do meanwhile (FILE_SHARE_READ, ...);
    // `flags` go to CreateFileW (FILE_FLAG_SEQUENTIAL_SCAN, ...). On failure valid() is false and
    // error() tells why.
    ProvisionalFile(const std::u16string& systemPath, DWORD share, DWORD flags = 0);
    ProvisionalFile(ProvisionalFile&& other) noexcept = default;
    ProvisionalFile& operator=(ProvisionalFile&& other) noexcept = default;
    ProvisionalFile(const ProvisionalFile&) = delete;
    ProvisionalFile& operator=(const ProvisionalFile&) = delete;

    bool valid() const { return handle_.valid(); }
    DWORD error() const { return error_; }
    HANDLE handle() const { return handle_.get(); }
    // Its temporary name.
    const std::u16string& path() const { return path_; }

    // All of `bytes` at the file position, or false with error() set (a short write counts as a
    // full disk).
    bool write(const uint8_t* bytes, uint64_t size);
    // Gives the file the name `systemPath` (the long form, on the same volume), which must not
    // exist, and closes it: the temporary name goes, the file stays. False with error() set and
    // the file still open under its temporary name; ERROR_ALREADY_EXISTS or ERROR_FILE_EXISTS when
    // the name is taken.
    bool keepAs(const std::u16string& systemPath);
    // Closes it and so removes it, unless kept.
    void close() { handle_.reset(); }

  private:
    bool fail(DWORD error);
    bool copyAs(const std::u16string& systemPath);

    std::u16string path_;
    UniqueFileHandle handle_;
    DWORD error_ = 0;
};

}  // namespace slib
