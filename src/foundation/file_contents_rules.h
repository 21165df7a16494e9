#pragma once
// The rules of reading and writing file contents that no system decides: where a position lands,
// and the one answer to a read too large for a host value.

#include <cstdint>

#include "foundation/file_manager.h"

namespace slib {

// The absolute offset a position names in a file of `size` bytes, before the start clamped to
// the start. `forReading` applies the read rule that (1, 0) is the last byte.
int64_t AbsoluteOffset(FilePosition position, uint64_t size, bool forReading);

// -50: a read would yield kLargestRead bytes or more.
[[noreturn]] void ThrowTooLargeToRead();

}  // namespace slib
