#include "bridge/text_conversion.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

#include "bridge/encoding_keywords.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/text_detection.h"
#include "foundation/zeroed_pages.h"
#include "shell/host_text.h"

namespace bridge {

namespace {

fmlib::TextPtr FromUtf16(const uint8_t* bytes, size_t size, bool bigEndian) {
    std::u16string units(size / 2, u'\0');
    for (size_t index = 0; index < units.size(); ++index) {
        const uint8_t first = bytes[2 * index];
        const uint8_t second = bytes[2 * index + 1];
        units[index] = static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return fmlib::MakeText(units);
}

}  // namespace

fmlib::TextPtr DecodeText(const uint8_t* bytes, size_t size, int32_t encoding) {
    if (encoding == encoding::kUtf16) {
        return FromUtf16(bytes, size, false);
    }
    fmlib::TextPtr text = fmlib::NewText();
    if (size > 0) {
        fmlib::TextAssignWithLength(*text, reinterpret_cast<const char*>(bytes),
                                    static_cast<uint32_t>(size), encoding);
    }
    return text;
}

fmlib::TextPtr DecodeAutomaticText(const uint8_t* bytes, size_t size) {
    const slib::ByteOrderMark mark = slib::DetectByteOrderMark(bytes, size);
    const size_t skip = slib::ByteOrderMarkLength(mark);
    switch (mark) {
        case slib::ByteOrderMark::kUtf8:
            return DecodeText(bytes + skip, size - skip, encoding::kUtf8);
        case slib::ByteOrderMark::kUtf16LittleEndian:
            return FromUtf16(bytes + skip, size - skip, false);
        case slib::ByteOrderMark::kUtf16BigEndian:
            return FromUtf16(bytes + skip, size - skip, true);
        case slib::ByteOrderMark::kNone:
            break;
    }
    const bool utf8 = slib::IsValidUtf8(bytes, size);
    return DecodeText(bytes, size, utf8 ? encoding::kUtf8 : 0);
}

// The host's conversion does not say how many bytes it wrote, and the text may hold zero
// characters. So a sentinel "x" goes after the text and the buffer starts zeroed: the last
// non-zero byte is the converted sentinel, and the text's bytes end just before it.
std::vector<uint8_t> EncodeText(const FmxText& text, int32_t encoding) {
    fmlib::TextPtr marked = fmlib::CopyText(text);
    const fmlib::TextPtr sentinel = fmlib::MakeText(u"x");
    fmlib::TextAppendText(*marked, *sentinel, 0, 1);
    // No code page takes more than four bytes for a UTF-16 unit (UTF-8 and GB18030 at most
    // four for a pair, three for one unit), and "default" or "dos" may be any of them, UTF-8
    // included, so every encoding gets the same room.
    const uint64_t wanted = uint64_t{fmlib::TextSize(*marked)} * 4 + 1;
    if (wanted > 0xFFFFFFFFu) {
        slib::Throw(slib::kBadParameter, "Text too long to convert in one piece");
    }
    const auto capacity = static_cast<uint32_t>(wanted);
    // Fresh pages are zero already and cost memory only where the host writes.
    const slib::UniqueZeroedPages buffer = slib::AllocateZeroedPages(capacity);
    if (!buffer.valid()) {
        throw std::bad_alloc();
    }
    char* bytes = static_cast<char*>(buffer.get());
    fmlib::TextGetBytes(*marked, bytes, capacity, 0, 0xFFFFFFFFu, encoding);
    size_t end = capacity;
    while (end > 0 && bytes[end - 1] == 0) {
        --end;
    }
    // Without the sentinel at the end the host stopped early: the bytes are not the whole text.
    if (end == 0 || bytes[end - 1] != 'x') {
        slib::Throw(slib::kBadParameter, "Text did not fit the conversion buffer");
    }
    return std::vector<uint8_t>(bytes, bytes + end - 1);
}

std::vector<uint8_t> Utf16Bytes(const FmxText& text) {
    const uint32_t size = fmlib::TextSize(text);
    std::vector<uint8_t> bytes(size_t{size} * 2);
    if (size > 0) {
        std::u16string units(size, u'\0');
        fmlib::TextGetUnicode(text, &units[0], 0, size);
        std::memcpy(bytes.data(), units.data(), bytes.size());
    }
    return bytes;
}

}  // namespace bridge
