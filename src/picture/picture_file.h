#pragma once
// Whole picture files in and out of memory. Pictures are decoded from memory, never from the
// file, so no engine keeps the source open and the script may move or delete it at once.

#include <cstdint>
#include <vector>

#include "foundation/utf16_string.h"

namespace slib {

// The bytes of the file at `path`: -43 `missingMessage` when there is no item there, -50 "This
// is not a picture." for a folder.
std::vector<uint8_t> ReadPictureFile(const String& path, const char* missingMessage);

// Creates or replaces the file at `path` with `bytes`. A failure leaves the target as it was.
void WritePictureFile(const String& path, const std::vector<uint8_t>& bytes);

}  // namespace slib
