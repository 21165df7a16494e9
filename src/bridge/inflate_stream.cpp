#include "bridge/inflate_stream.h"

#include <zlib.h>

#include <new>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/unique_resource.h"

namespace bridge {

namespace {

// zlib's stream state is not a system resource, so its owner lives here with its one user.
using InflateState = slib::UniqueResource<z_streamp, &inflateEnd>;

constexpr size_t kLargest = 0xFFFFFFFFu;
constexpr size_t kStep = 1u << 20;

[[noreturn]] void ThrowDamaged() {
    slib::Throw(slib::kBadParameter, "Compressed data in container is damaged");
}

}  // namespace

std::vector<uint8_t> InflateStream(const uint8_t* bytes, size_t size) {
    z_stream stream{};
    // 15 + 32: a 32 KiB window and automatic zlib or gzip header detection.
    const int started = inflateInit2(&stream, 15 + 32);
    if (started == Z_MEM_ERROR) {
        throw std::bad_alloc();
    }
    if (started != Z_OK) {
        ThrowDamaged();
    }
    const InflateState state(&stream);
    stream.next_in = const_cast<Bytef*>(bytes);
    stream.avail_in = static_cast<uInt>(size);
    std::vector<uint8_t> out;
    int status = Z_OK;
    while (status != Z_STREAM_END) {
        if (out.size() >= kLargest) {
            slib::Throw(slib::kBadParameter, "File in container is too large (4 GiB or more)");
        }
        const size_t done = out.size();
        out.resize(done + kStep);
        stream.next_out = out.data() + done;
        stream.avail_out = static_cast<uInt>(kStep);
        status = inflate(&stream, Z_NO_FLUSH);
        out.resize(done + (kStep - stream.avail_out));
        if (status == Z_MEM_ERROR) {
            throw std::bad_alloc();
        }
        if (status != Z_OK && status != Z_STREAM_END) {
            ThrowDamaged();
        }
        if (status == Z_OK && stream.avail_in == 0 && stream.avail_out != 0) {
            ThrowDamaged();  // the input ended before the stream did
        }
    }
    return out;
}

}  // namespace bridge
