#pragma once
// The byte interfaces the format code works on, so that it never touches a file itself: the
// Windows layer implements them over file handles, tests and the fuzzer over memory.

#include <cstddef>
#include <cstdint>

namespace archive {

// An archive being read, at any offset. Unpacking reads from several threads at once.
class ByteSource {
  public:
    virtual ~ByteSource() = default;
    virtual uint64_t size() const = 0;
    // Exactly `length` bytes at `offset`; false when they cannot be read.
    virtual bool readAt(uint64_t offset, uint8_t* buffer, size_t length) = 0;
};

// An archive being written: bytes at any offset (appending, and patching headers afterwards).
class ByteWriter {
  public:
    virtual ~ByteWriter() = default;
    // Writes all `length` bytes or throws.
    virtual void writeAt(uint64_t offset, const uint8_t* data, size_t length) = 0;
};

// The content of a file being added, read front to back.
class ByteStream {
  public:
    virtual ~ByteStream() = default;
    // Up to `capacity` bytes; 0 at the end. Throws when the file cannot be read.
    virtual size_t read(uint8_t* buffer, size_t capacity) = 0;
};

}  // namespace archive
