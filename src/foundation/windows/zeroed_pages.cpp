#include "foundation/zeroed_pages.h"

#include <windows.h>

namespace slib {

void ReleaseZeroedPages(void* pages) {
    VirtualFree(pages, 0, MEM_RELEASE);
}

UniqueZeroedPages AllocateZeroedPages(size_t size) {
    return UniqueZeroedPages(VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
}

}  // namespace slib
