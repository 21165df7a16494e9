#pragma once
// Base64 (RFC 4648, standard alphabet, "=" padding) for the "base64" encoding of file contents.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace slib {

// ASCII text with padding and no line breaks.
std::string EncodeBase64(const uint8_t* bytes, size_t size);

// Blanks, tabs and line breaks anywhere are skipped; padding is optional but, when present, ends
// the text: alphabet characters after it ("SGk=\rSGk=") throw -50 "padding before the end". Any
// other character, or a lone final character, throws -50.
std::vector<uint8_t> DecodeBase64(std::u16string_view text);

// The same decoding for text that arrives in pieces of any size (a host text read a range at a
// time), so that a large text is never copied whole. The result buffer is sized once from
// `textUnits`, the length of all pieces together.
class Base64Decoder {
  public:
    explicit Base64Decoder(size_t textUnits);
    void Feed(std::u16string_view piece);
    std::vector<uint8_t> Finish();

  private:
    std::vector<uint8_t> bytes_;
    size_t size_ = 0;
    uint32_t group_ = 0;
    int sextets_ = 0;
    bool padding_ = false;  // an "=" was seen: only padding and blanks may follow
};

}  // namespace slib
