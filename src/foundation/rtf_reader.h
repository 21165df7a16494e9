#pragma once
// A reader of RTF from anywhere (untrusted bytes): the document's text as UTF-16 and its
// character formats in the host's terms. It never fails: whatever it cannot make sense of is
// skipped, and it never reads past the end.
//
// Groups nest on an explicit stack of at most kRtfMaxGroupDepth levels; braces deeper than that
// are still matched but flattened into the deepest kept group (their formats leak into it).
// Paragraph and line breaks become CR, tabs and cells TAB; one paragraph mark that ends the
// document is the document's own, not text. NUL characters are dropped. Bytes ("\'hh" and
// raw bytes above ASCII) are decoded in the code page of the current font's \fcharset (or
// \cpg), else the document's \ansicpg, else 1252.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "foundation/rich_text.h"

namespace slib {

constexpr size_t kRtfMaxGroupDepth = 512;

// Bytes of a Windows code page as UTF-16; bytes it cannot map become what the decoder chooses.
using CodePageDecoder = std::function<std::u16string(uint32_t codePage, std::string_view bytes)>;

// The document ends with the brace that closes its first group (a missing one is forgiven);
// input that is no RTF at all is read as if it were the body of one. Every character has a run:
// font (the table's name for \f, or \deff's), size (\fs; 12 points by default), colour (\cf, none
// for auto), face bits.
RichText ReadRtf(std::string_view rtf, const CodePageDecoder& decode);

// The code page of a font's \fcharset number; 0 for none (the document's code page applies).
uint32_t CodePageOfCharset(long charset);

}  // namespace slib
