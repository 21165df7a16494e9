#pragma once
// The one call that puts new contents in a file's place, whole or not at all, on every system
// (each system's replacement_file.h has the how).

#include <cstdint>
#include <string>

namespace slib {

// Replaces (or creates) the file at `path` (plain form) with `size` bytes; throws `message` with
// the system's error on failure, the file at `path` unchanged (or, should Windows have had to
// leave the original under its backup name, a message that says where it is).
void ReplaceFileContents(const std::u16string& path, const uint8_t* bytes, uint64_t size,
                         const char* message);

}  // namespace slib
