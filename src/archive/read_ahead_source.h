#pragma once
// Serves small reads of an archive from one window read ahead. Entries lie one after another, so
// the local headers and the data of small entries arrive in a handful of large reads instead of
// two reads per entry (under Wine each read is a round trip to the server, which is busy creating
// the extracted files). Reads as large as a good part of the window go straight through.

#include <cstdint>
#include <vector>

#include "archive/archive_io.h"

namespace archive {

class ReadAheadSource : public ByteSource {
  public:
    static constexpr size_t kWindowSize = 1024 * 1024;
    static constexpr size_t kLargestCachedRead = kWindowSize / 8;

    explicit ReadAheadSource(ByteSource& source) : source_(source) {}
    uint64_t size() const override { return source_.size(); }
    bool readAt(uint64_t offset, uint8_t* buffer, size_t length) override;

  private:
    ByteSource& source_;
    std::vector<uint8_t> window_;
    uint64_t windowOffset_ = 0;
};

}  // namespace archive
