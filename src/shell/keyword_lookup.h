// Matching an argument against a fixed keyword list without regard to case, using the host's
// own lowercasing on both sides so the match agrees with the host's notion of case.
#pragma once

#include <cstddef>
#include <cstdint>

#include "fmx_functions.h"

namespace fmlib {

// The 0-based position of the first keyword equal to `text` once both are lowercased, or -1.
// Keywords are 8-bit texts in the host's native encoding.
int32_t LookupKeyword(const FmxText& text, const char* const* table, size_t count);

template <size_t N>
int32_t LookupKeyword(const FmxText& text, const char* const (&table)[N]) {
    return LookupKeyword(text, table, N);
}

}  // namespace fmlib
