#pragma once
// The "hex-dump" text form of bytes: two upper-case digits per byte, blanks between bytes, a
// carriage return after every sixteenth byte ("48 69 0A").

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace slib {

// ASCII text; empty for no bytes, never a trailing blank or line break.
std::string EncodeHexDump(const uint8_t* bytes, size_t size);

// Digits of either case, in pairs; blanks, tabs and line breaks may separate groups of pairs.
// Anything else throws -50 naming what is wrong; nothing is returned half-decoded.
std::vector<uint8_t> DecodeHexDump(std::u16string_view text);

// The same decoding for text that arrives in pieces of any size (a pair of digits may be split
// between two pieces), so that a large host text is never copied whole. The result buffer is
// sized once from `textUnits`, the length of all pieces together.
class HexDumpDecoder {
  public:
    explicit HexDumpDecoder(size_t textUnits);
    void Feed(std::u16string_view piece);
    std::vector<uint8_t> Finish();

  private:
    std::vector<uint8_t> bytes_;
    size_t size_ = 0;
    int pendingHigh_ = -1;  // the first digit of a pair whose second is in the next piece
};

}  // namespace slib
