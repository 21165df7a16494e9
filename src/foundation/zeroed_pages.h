#pragma once
// Memory that starts zeroed and costs physical pages only where it is written: room for an
// answer of unknown length, measured afterwards by its last non-zero byte.

#include <cstddef>

#include "foundation/unique_resource.h"

namespace slib {

void ReleaseZeroedPages(void* pages);
using UniqueZeroedPages = UniqueResource<void*, &ReleaseZeroedPages>;

// Empty when the system has no room for `size` bytes.
UniqueZeroedPages AllocateZeroedPages(size_t size);

}  // namespace slib
