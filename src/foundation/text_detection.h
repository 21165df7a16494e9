#pragma once
// How a file's bytes look as text: a byte-order mark, valid UTF-8, or plain single-byte text.

#include <cstddef>
#include <cstdint>

namespace slib {

enum class ByteOrderMark { kNone, kUtf8, kUtf16LittleEndian, kUtf16BigEndian };

ByteOrderMark DetectByteOrderMark(const uint8_t* bytes, size_t size);
// Number of bytes the mark takes (0 for kNone).
size_t ByteOrderMarkLength(ByteOrderMark mark);

// Well-formed UTF-8: no overlong forms, surrogates or values above U+10FFFF. With
// `mayBeCutShort`, a sequence that the end of the bytes interrupts is accepted (a file's head).
bool IsValidUtf8(const uint8_t* bytes, size_t size, bool mayBeCutShort = false);

// Bytes a person would call text: no zero byte, and control characters only as tab, line feed,
// form feed, carriage return or escape.
bool LooksLikeText(const uint8_t* bytes, size_t size);

}  // namespace slib
