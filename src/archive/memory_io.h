#pragma once
// The byte interfaces over memory, for archives that never touch a disk (tests, the fuzzer).

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

class MemoryStream : public ByteStream {
  public:
    explicit MemoryStream(std::string content) : content_(std::move(content)) {}
    size_t read(uint8_t* buffer, size_t capacity) override {
        const size_t length = std::min(capacity, content_.size() - position_);
        std::memcpy(buffer, content_.data() + position_, length);
        position_ += length;
        return length;
    }

  private:
    std::string content_;
    size_t position_ = 0;
};

}  // namespace archive
