// Texts to and from byte strings in the host's encodings.
#include <cstring>

#include "encoding.h"
#include "guard.h"
#include "objects.h"

using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

fmhost::Text& TextOf(void* self) {
    return Ref<FmxText>(self).text;
}

std::u16string RangeOf(const void* self, uint32_t position, uint32_t size) {
    return Ref<FmxText>(self).text.Range(position, size).Chars();
}

}  // namespace

extern "C" {

void FM_Text_Assign(void* self, const char* s, int32_t encoding, FmxErr& err) {
    Guard(err, [&] {
        if (s == nullptr)
            throw std::invalid_argument("null string");
        TextOf(self).Assign(fmwrapper::Decode(s, std::strlen(s), encoding));
    });
}

void FM_Text_AssignWithLength(void* self, const char* s, uint32_t strlength, int32_t encoding,
                              FmxErr& err) {
    Guard(err, [&] { TextOf(self).Assign(fmwrapper::Decode(s, strlength, encoding)); });
}

// Always terminated, never more than `buffersize` bytes including the terminator.
void FM_Text_GetBytes(const void* self, char* buffer, uint32_t buffersize, uint32_t position,
                      uint32_t size, int32_t encoding, FmxErr& err) {
    Guard(err, [&] {
        const std::u16string range = RangeOf(self, position, size);
        if (buffersize == 0)
            return;
        if (buffer == nullptr)
            throw std::invalid_argument("null buffer");
        const std::string bytes = fmwrapper::EncodePrefix(range, encoding, buffersize - 1);
        std::memcpy(buffer, bytes.data(), bytes.size());
        buffer[bytes.size()] = '\0';
    });
}

// No terminator; returns the byte count written. A null buffer asks for the count needed.
uint32_t FM_Text_GetBytesEx(const void* self, char* buffer, uint32_t buffersize, uint32_t position,
                            uint32_t size, int32_t encoding, FmxErr& err) {
    return Guard(err, [&]() -> uint32_t {
        const std::u16string range = RangeOf(self, position, size);
        if (buffer == nullptr)
            return static_cast<uint32_t>(fmwrapper::Encode(range, encoding).size());
        const std::string bytes = fmwrapper::EncodePrefix(range, encoding, buffersize);
        std::memcpy(buffer, bytes.data(), bytes.size());
        return static_cast<uint32_t>(bytes.size());
    });
}

}  // extern "C"
