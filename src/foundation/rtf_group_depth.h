#pragma once
// How deeply an RTF document's groups nest, without reading it: for a reader that recurses per
// group and must not be handed more than it can take.

#include <cstddef>
#include <string_view>

namespace slib {

// The deepest nesting of "{", not counting escaped braces or "\binN" data. Stops counting once
// past `limit` (the answer is then limit + 1), so any input costs one pass at most.
size_t RtfGroupDepth(std::string_view rtf, size_t limit);

}  // namespace slib
