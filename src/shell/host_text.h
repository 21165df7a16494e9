// Wrappers of the host's text calls (one per FM_Text_* call used) and small helpers built on
// them. Positions and sizes are in UTF-16 units.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "fmx_functions.h"
#include "shell/host_objects.h"

namespace fmlib {

uint32_t TextSize(const FmxText& text);
void TextGetUnicode(const FmxText& text, char16_t* units, uint32_t position, uint32_t size);
void TextAssignUnicode(FmxText& text, std::u16string_view units);
// `bytes` is zero-terminated and decoded by the host with `encoding` (0 = the platform's own).
void TextAssign(FmxText& text, const char* bytes, int32_t encoding);
// `length` bytes decoded by the host with `encoding` (0..36); zero bytes are kept.
void TextAssignWithLength(FmxText& text, const char* bytes, uint32_t length, int32_t encoding);
// The host's encoding of [position, position + size) into `buffer`, zero-terminated when it fits.
void TextGetBytes(const FmxText& text, char* buffer, uint32_t bufferSize, uint32_t position,
                  uint32_t size, int32_t encoding);
void TextSetText(FmxText& text, const FmxText& source, uint32_t position, uint32_t size);
void TextAppendText(FmxText& text, const FmxText& source, uint32_t position, uint32_t size);
// The host's "not found" is fmx::kSizeInvalid.
uint32_t TextFind(const FmxText& text, const FmxText& what, uint32_t position);
uint32_t TextFindIgnoringCase(const FmxText& text, const FmxText& what, uint32_t position);
void TextDeleteText(FmxText& text, uint32_t position, uint32_t size);
void TextLowercase(const FmxText& text);
bool TextEquals(const FmxText& a, const FmxText& b);
void TextGetStyle(const FmxText& text, FmxCharacterStyle& style, uint32_t position);
void TextSetStyle(FmxText& text, const FmxCharacterStyle& style, uint32_t position, uint32_t size);

// Helpers.
std::u16string TextUnits(const FmxText& text);
TextPtr MakeText(std::u16string_view units);
TextPtr MakeNativeText(const char* bytes);  // 8-bit, host encoding 0
TextPtr CopyText(const FmxText& source);

}  // namespace fmlib
