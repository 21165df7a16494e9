#include "picture/picture_signature.h"

#include <cstring>

namespace slib {
namespace {

struct Signature {
    size_t offset;
    size_t length;
    const char* bytes;
};

const Signature kSignatures[] = {
    {0, 3, "\xFF\xD8\xFF"},       // JPEG
    {0, 8, "\x89PNG\r\n\x1A\n"},  // PNG
    {0, 4, "GIF8"},               // GIF87a, GIF89a
    {0, 2, "BM"},                 // BMP
    {0, 4, "II*\0"},              // TIFF, little-endian
    {0, 4, "MM\0*"},              // TIFF, big-endian
    {0, 4, "\0\0\1\0"},           // ICO
    {40, 4, " EMF"},              // EMF ("signature" of its header record)
    {0, 4, "\xD7\xCD\xC6\x9A"},   // placeable WMF
};

}  // namespace

bool HasPictureSignature(const uint8_t* bytes, size_t size) {
    if (bytes == nullptr) {
        return false;
    }
    for (const Signature& signature : kSignatures) {
        if (size >= signature.offset + signature.length &&
            std::memcmp(bytes + signature.offset, signature.bytes, signature.length) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace slib
