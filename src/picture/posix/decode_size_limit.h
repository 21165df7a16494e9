#pragma once
// The largest picture a decoder may allocate, checked against the size a header declares before
// any pixel memory is taken: the converter's own limits (a side of 65,536, 2^28 pixels).

#include <cstdint>

namespace slib {

// -50 "Picture data is damaged" for an empty side, -50 "Cannot create a picture of that size"
// beyond the limits.
void RequireDecodableSize(uint64_t width, uint64_t height);

// The pixel limit in force: the decoders bound their libraries' own working memory by it.
uint64_t DecodedPixelCap();

// Lowers the pixel limit (never raises it past the converter's): the fuzzer keeps each input
// fast with it. 0 restores the converter's limit.
void SetDecodedPixelCap(uint64_t pixels);

}  // namespace slib
