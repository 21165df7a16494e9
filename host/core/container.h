// Container (binary) data: an ordered list of streams, each a type code and bytes, at most
// one stream per type and never an empty one. Stream bytes are shared between copies.
//
// Our own layouts of the two structured streams:
//   FNAM  the file name (or file-path list) as UTF-8 bytes, no byte-order mark, no terminator.
//   SIZE  4 bytes: width then height, each a signed 16-bit little-endian number.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "core/text.h"
#include "core/type_code.h"

namespace fmhost {

using Bytes = std::vector<uint8_t>;

// Results of the container operations that can fail (0 = success).
namespace container_error {
constexpr int16_t kOk = 0;
constexpr int16_t kBadIndex = 1;       // no stream at that index / range outside the stream
constexpr int16_t kDuplicateType = 2;  // a stream of that type is already there
constexpr int16_t kEmptyStream = 3;    // streams may not be empty
constexpr int16_t kNoSuchStream = 4;   // FNAM or SIZE absent
constexpr int16_t kMalformed = 5;      // SIZE stream of the wrong length
constexpr int16_t kBadContext = 6;     // unknown piecewise-add context
constexpr int16_t kTooLarge = 7;       // a stream would exceed 4 GiB
}  // namespace container_error

class Container {
  public:
    struct Stream {
        TypeCode type;
        std::shared_ptr<const Bytes> bytes;
    };

    Container() = default;
    // What the host builds for a file: a picture stream (JPEG, PNGf, GIFf, BMPf, chosen by
    // the extension of `name`, with SIZE when the header gives the dimensions) or FILE for
    // anything else, plus FNAM holding `name`.
    static Container FromFile(const Text& name, const uint8_t* bytes, size_t size);

    int32_t Count() const { return static_cast<int32_t>(streams_.size()); }
    bool Empty() const { return streams_.empty(); }
    int32_t IndexOf(TypeCode type) const;  // -1 when absent
    uint64_t TotalSize() const;
    TypeCode TypeAt(int32_t index) const;  // zero code for a bad index
    uint32_t SizeAt(int32_t index) const;  // 0 for a bad index
    const Stream* StreamAt(int32_t index) const;
    const Bytes* BytesOf(TypeCode type) const;
    int16_t Read(int32_t index, uint32_t offset, uint32_t amount, void* buffer) const;

    int16_t Add(TypeCode type, const void* bytes, size_t size);
    bool Remove(TypeCode type);
    void RemoveAll();

    int16_t AddFileName(const Text& fileName);
    int16_t GetFileName(Text& fileName) const;
    int16_t AddPictureSize(int16_t width, int16_t height);
    int16_t GetPictureSize(int16_t& width, int16_t& height) const;

    // Piecewise adding: Begin hands out a context (never 0); Append adds bytes; Finish adds the
    // stream. BeginFile defers the choice of streams to FromFile's rules at Finish.
    int16_t BeginStream(TypeCode type, uint32_t& context);
    int16_t BeginFile(const Text& name, uint32_t& context);
    int16_t AppendStream(uint32_t context, const void* bytes, size_t size);
    int16_t FinishStream(uint32_t context);

    // Same streams in the same order with the same bytes; open piecewise adds are ignored.
    friend bool operator==(const Container& a, const Container& b);
    friend bool operator!=(const Container& a, const Container& b) { return !(a == b); }

  private:
    struct Pending {
        bool isFile = false;
        TypeCode type;
        Text name;
        Bytes bytes;
    };

    std::vector<Stream> streams_;
    std::map<uint32_t, Pending> pending_;
    uint32_t nextContext_ = 1;
};

}  // namespace fmhost
