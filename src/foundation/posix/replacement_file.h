#pragma once
// A file's new contents, put in its place only once complete, so a failure at any point (bad
// data, a full disk, the process killed) leaves the file that was there byte for byte as it was,
// and a new file either whole or absent. The contents are written as a ProvisionalFile beside
// the target and renamed over it when done, with the original's permission bits and, where the
// system lets us, its owner and group. A symbolic link in the file's place is refused (ELOOP),
// never written through nor replaced; so are a folder (EISDIR) and a file we may not write
// (EACCES).

#include <cstdint>
#include <optional>
#include <string>

#include <sys/stat.h>

#include "foundation/posix/provisional_file.h"
#include "foundation/replace_contents.h"

namespace slib {

class ReplacementFile {
  public:
    explicit ReplacementFile(std::string target);
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    bool valid() const { return file_.valid(); }
    // errno of the failure.
    int error() const { return error_; }
    ProvisionalFile& file() { return file_; }

    // All of `bytes`, or false with error() set.
    bool write(const uint8_t* bytes, uint64_t size);
    // Flushes the new contents and puts them in place; false with error() set and the target
    // as it was.
    bool commit();

  private:
    bool fail(int error);
    // Why the item now at the target may not be replaced; 0 when it may (or is absent).
    int refusal();

    std::string target_;
    std::optional<struct stat> original_;
    ProvisionalFile file_;
    int error_ = 0;
};

}  // namespace slib
