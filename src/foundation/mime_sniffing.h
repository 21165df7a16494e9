#pragma once
// The MIME type of a file from its first bytes and its name, with no help from the system's
// registry, so the answer is the same on every machine.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace slib {

// How many bytes of a file's head SniffMimeType looks at.
constexpr size_t kMimeSniffLength = 4096;

// In this order: a known signature ("image/png", "application/pdf", "application/zip", ...);
// text content (a byte-order mark, valid UTF-8 or control-free single-byte text) as
// "text/plain", or the text type of its extension; the extension table; else
// "application/octet-stream". An empty file is "text/plain".
std::string SniffMimeType(const uint8_t* head, size_t size, std::u16string_view fileName);

}  // namespace slib
