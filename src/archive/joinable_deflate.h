#pragma once
// Deflates parts of one large entry independently, with libdeflate, so that their streams
// concatenate into the entry's one deflate stream. libdeflate only writes complete streams: a
// part other than the last has its final block marked as not final and is followed by an empty
// stored block (what zlib's sync flush writes), which brings it to a byte boundary. Where the
// final block starts, and how many bits its last byte leaves spare, come from inflating the
// stream block by block with zlib (Z_BLOCK); libdeflate leaves the spare bits zero.
//
// Each part starts without the previous part's bytes as history, which costs a few hundred bytes
// per part: parts of a few megabytes lose a tenth of a percent at most.

#include <libdeflate.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "archive/raw_inflater.h"
#include "foundation/unique_resource.h"

namespace archive {

class JoinableDeflater {
  public:
    explicit JoinableDeflater(int level) : compressor_(libdeflate_alloc_compressor(level)) {}

    // Deflates `input` into `output` (grown as needed): a finished stream when `last`, else one
    // the next part's stream may follow. Its length, or 0 when libdeflate or zlib refused.
    size_t deflate(const uint8_t* input, size_t length, bool last, std::vector<uint8_t>& output);

  private:
    bool makeJoinable(uint8_t* data, size_t& length);

    slib::UniqueResource<libdeflate_compressor*, &libdeflate_free_compressor> compressor_;
    RawInflater inflater_;
    std::vector<uint8_t> scratch_;
};

}  // namespace archive
