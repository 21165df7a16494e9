#include "picture/picture_signature.h"

#include <cstring>

namespace slib {
namespace {

struct Signature {
    size_t offset;
    size_t length;
    const char* bytes;
    SignedFormat format;
};

const Signature kSignatures[] = {
    {0, 3, "\xFF\xD8\xFF", SignedFormat::kJpeg},
    {0, 8, "\x89PNG\r\n\x1A\n", SignedFormat::kPng},
    {0, 4, "GIF8", SignedFormat::kGif},  // GIF87a, GIF89a
    {0, 2, "BM", SignedFormat::kBmp},
    {0, 4, "II*\0", SignedFormat::kTiff},  // little-endian
    {0, 4, "MM\0*", SignedFormat::kTiff},  // big-endian
    {0, 4, "\0\0\1\0", SignedFormat::kIco},
    {40, 4, " EMF", SignedFormat::kEmf},             // the "signature" of its header record
    {0, 4, "\xD7\xCD\xC6\x9A", SignedFormat::kWmf},  // placeable
};

}  // namespace

std::optional<SignedFormat> FindPictureSignature(const uint8_t* bytes, size_t size) {
    if (bytes == nullptr) {
        return std::nullopt;
    }
    for (const Signature& signature : kSignatures) {
        if (size >= signature.offset + signature.length &&
            std::memcmp(bytes + signature.offset, signature.bytes, signature.length) == 0) {
            return signature.format;
        }
    }
    return std::nullopt;
}

bool HasPictureSignature(const uint8_t* bytes, size_t size) {
    return FindPictureSignature(bytes, size).has_value();
}

}  // namespace slib
