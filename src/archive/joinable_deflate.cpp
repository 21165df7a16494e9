#include "archive/joinable_deflate.h"

#include <zlib.h>

namespace archive {

namespace {

// An empty stored block's LEN and NLEN, after its three header bits and the padding.
constexpr uint8_t kEmptyStoredLengths[] = {0x00, 0x00, 0xFF, 0xFF};
constexpr size_t kMostAdded = 1 + sizeof kEmptyStoredLengths;
constexpr size_t kScratchSize = 64 * 1024;

}  // namespace

size_t JoinableDeflater::deflate(const uint8_t* input, size_t length, bool last,
                                 std::vector<uint8_t>& output) {
    if (!compressor_) {
        return 0;
    }
    const size_t bound = libdeflate_deflate_compress_bound(compressor_.get(), length) + kMostAdded;
    if (output.size() < bound) {
        output.resize(bound);
    }
    size_t produced =
        libdeflate_deflate_compress(compressor_.get(), input, length, output.data(), bound);
    if (produced == 0 || (!last && !makeJoinable(output.data(), produced))) {
        return 0;
    }
    return produced;
}

// `data` has room for kMostAdded more bytes.
bool JoinableDeflater::makeJoinable(uint8_t* data, size_t& length) {
    z_stream& stream = inflater_.stream();
    if (!inflater_.ready() || inflateReset(&stream) != Z_OK) {
        return false;
    }
    scratch_.resize(kScratchSize);
    stream.next_in = data;
    stream.avail_in = static_cast<uInt>(length);
    size_t blockStart = 0;  // bit position of the current block's header
    for (;;) {
        stream.next_out = scratch_.data();
        stream.avail_out = static_cast<uInt>(scratch_.size());
        if (inflate(&stream, Z_BLOCK) != Z_OK) {
            return false;
        }
        if ((stream.data_type & 128) == 0) {
            continue;  // mid-block: the scratch output was full
        }
        // At a block boundary fewer than eight bits of the last byte read are left.
        const unsigned spareBits = static_cast<unsigned>(stream.data_type & 7);
        const size_t boundary = static_cast<size_t>(stream.next_in - data) * 8 - spareBits;
        if ((stream.data_type & 64) == 0) {
            blockStart = boundary;
            continue;
        }
        // The final block has ended, and with it the stream libdeflate wrote.
        if (stream.avail_in != 0) {
            return false;
        }
        data[blockStart / 8] &= static_cast<uint8_t>(~(1u << (blockStart % 8)));
        // The stored block's three header bits, all zero: in the spare bits when they fit.
        if (spareBits < 3) {
            data[length++] = 0;
        }
        for (const uint8_t byte : kEmptyStoredLengths) {
            data[length++] = byte;
        }
        return true;
    }
}

}  // namespace archive
