#pragma once
// Runs a row loop over the machine's cores when the work is large enough to repay the threads:
// a small picture is done on the calling thread alone.

#include <cstdint>
#include <functional>

namespace slib {

// Calls `body(first, end)` for disjoint ranges covering [0, rows), some on other threads, and
// returns when all are done. `work` is the number of multiply-adds the whole loop costs.
// `body` must not throw.
void ForEachRowBlock(uint32_t rows, uint64_t work,
                     const std::function<void(uint32_t first, uint32_t end)>& body);

}  // namespace slib
