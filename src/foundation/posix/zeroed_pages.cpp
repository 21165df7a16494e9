#include "foundation/zeroed_pages.h"

#include <cstdlib>

namespace slib {

void ReleaseZeroedPages(void* pages) {
    std::free(pages);
}

// A large calloc is a fresh mapping, already zero: nothing is written until the caller writes.
UniqueZeroedPages AllocateZeroedPages(size_t size) {
    return UniqueZeroedPages(std::calloc(size == 0 ? 1 : size, 1));
}

}  // namespace slib
