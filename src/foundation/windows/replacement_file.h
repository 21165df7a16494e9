#pragma once
// A file's new contents, put in its place only once complete, so a failure at any point (bad
// data, a full disk, a lock, the process killed) leaves the file that was there byte for byte as
// it was, and a new file either whole or absent. The contents are written beside the target as a
// ProvisionalFile ("~vf-*.partial") and given the target's name when done, or, over an existing
// file, swapped in (SwapIntoPlace), which keeps the original's attributes, security, streams and
// creation date (and takes hidden and system files, which CREATE_ALWAYS refuses).

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <cstdint>
#include <string>

#include "foundation/replace_contents.h"
#include "foundation/temporary_names.h"
#include "foundation/windows/file_swap.h"
#include "foundation/windows/provisional_file.h"

namespace slib {

class ReplacementFile {
  public:
    // Starts the new contents of `systemPath` (the long form the system gets); a link there is
    // followed, and the file it leads to replaced where it lies. A read-only target or a folder
    // is refused up front (ERROR_ACCESS_DENIED). On failure valid() is false and error() tells
    // why. `replace` is the system's ReplaceFileW but for tests.
    explicit ReplacementFile(const std::u16string& systemPath,
                             ReplaceFileFunction replace = &ReplaceFileW);
    // The new contents go unless committed.
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    bool valid() const { return file_.valid(); }
    DWORD error() const { return error_; }
    // Open for writing (and reading), shared with readers only, until commit.
    HANDLE handle() const { return file_.handle(); }

    // All of `bytes`, or false with error() set (a short write counts as a full disk).
    bool write(const uint8_t* bytes, uint64_t size);
    // Flushes the new contents and puts them in place. False with error() set, the target as it
    // was, unless strandedOriginal() names where the original had to stay.
    bool commit();
    // After a failed commit: where the original is (plain form) when it could be moved neither
    // back nor anywhere else; empty when it is in its place.
    const std::u16string& strandedOriginal() const { return stranded_; }

    // Whether a file name is one of our temporary ones: "~vf-<process>-<number>.partial".
    static bool IsTemporaryName(const std::u16string& name);

  private:
    bool fail(DWORD error);

    std::u16string target_;
    ReplaceFileFunction replace_;
    ProvisionalFile file_;
    DWORD error_ = 0;
    std::u16string stranded_;
};

// Puts `file` in the place of the existing file `target` (long form, on the file's volume), with
// the original's hidden, system and archive attributes: kept beside the target under a temporary
// name, then swapped in (SwapIntoPlace). Unless swapped, the file is gone afterwards, or still
// open (closing it removes it).
SwapOutcome ReplaceWith(ProvisionalFile& file, const std::u16string& target,
                        ReplaceFileFunction replace = &ReplaceFileW);

// Throws `message` and the failure of `file`'s commit, naming the original's place when it was
// stranded.
[[noreturn]] void ThrowReplaceFailure(const char* message, const ReplacementFile& file);

}  // namespace slib
