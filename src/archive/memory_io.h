#pragma once
// The byte interfaces over memory: archives that never touch a disk (tests, the fuzzer), and
// small entries and files held whole while they are packed or unpacked.

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "archive/archive_io.h"

namespace archive {

class MemorySource : public ByteSource {
  public:
    MemorySource(const uint8_t* data, size_t size) : data_(data), size_(size) {}
    explicit MemorySource(const std::vector<uint8_t>& bytes)
        : MemorySource(bytes.data(), bytes.size()) {}
    uint64_t size() const override { return size_; }
    bool readAt(uint64_t offset, uint8_t* buffer, size_t length) override {
        if (offset > size_ || length > size_ - offset) {
            return false;
        }
        std::memcpy(buffer, data_ + offset, length);
        return true;
    }

  private:
    const uint8_t* data_;
    size_t size_;
};

class MemoryWriter : public ByteWriter {
  public:
    void writeAt(uint64_t offset, const uint8_t* data, size_t length) override {
        if (bytes.size() < offset + length) {
            bytes.resize(static_cast<size_t>(offset + length));
        }
        std::copy(data, data + length, bytes.begin() + static_cast<std::ptrdiff_t>(offset));
    }
    std::vector<uint8_t> bytes;
};

// Bytes someone else owns, read front to back.
class MemoryStream : public ByteStream {
  public:
    MemoryStream(const uint8_t* data, size_t size) : data_(data), size_(size) {}
    explicit MemoryStream(const std::string& content)
        : MemoryStream(reinterpret_cast<const uint8_t*>(content.data()), content.size()) {}
    size_t read(uint8_t* buffer, size_t capacity) override {
        const size_t length = std::min(capacity, size_ - position_);
        std::memcpy(buffer, data_ + position_, length);
        position_ += length;
        return length;
    }

  private:
    const uint8_t* data_;
    size_t size_;
    size_t position_ = 0;
};

}  // namespace archive
