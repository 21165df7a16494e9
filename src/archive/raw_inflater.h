#pragma once
// A zlib inflate state for raw deflate streams (no zlib or gzip wrapper), ended when it goes.

#include <zlib.h>

namespace archive {

class RawInflater {
  public:
    RawInflater() { ready_ = inflateInit2(&stream_, -MAX_WBITS) == Z_OK; }
    ~RawInflater() {
        if (ready_) {
            inflateEnd(&stream_);
        }
    }
    RawInflater(const RawInflater&) = delete;
    RawInflater& operator=(const RawInflater&) = delete;
    bool ready() const { return ready_; }
    z_stream& stream() { return stream_; }

  private:
    z_stream stream_ = {};
    bool ready_ = false;
};

}  // namespace archive
