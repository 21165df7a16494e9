#pragma once
// Entry names in both directions: what a file is stored under, whether it is stored or deflated,
// and how a stored name is made safe before it becomes a path under the extraction folder.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/path_style.h"

namespace archive {

// The stored name of a walked item: its relative path (separated by the style's separator,
// starting with one) with everything up to its first separator dropped and "/" between the parts,
// as every other tool expects.
std::u16string StoredNameFromRelativePath(std::u16string_view relativePath,
                                          slib::PathStyle style = slib::NativePathStyle());

// True for the already-compressed kinds stored without deflating: the text from the name's last
// "." to its end is one of .Z .zip .zoo .arc .lzh .arj .gz .tgz, compared whole, with only the
// letters A to Z folded.
bool IsStoredWithoutCompression(std::u16string_view entryName);

// The stored name made safe, repeating until no rule applies: a drive prefix ("x:") goes, then a
// leading "\" or "/", then everything up to the last occurrence of "\..\", "\../", "/../" or
// "/..\" (the first of these patterns that occurs). A leading "../" is left alone here;
// ResolveInsideFolder refuses it.
std::u16string SanitiseEntryName(std::u16string name);

// The folders and file a sanitised name leads to, from the extraction folder down ("a/./b/" gives
// {"a", "b"}), each part made usable on Windows by slib::MakeNameComponentUsable ("aux.txt" gives
// "aux_.txt", "a:b" gives "a_b", so no part can name a device or a stream); nullopt when it would
// leave that folder (a ".." reaching above it). A NUL is left in place for the caller to refuse.
std::optional<std::vector<std::u16string>> ResolveInsideFolder(std::u16string_view name);

// True when `bytes` is well-formed UTF-8 (plain ASCII included).
bool IsUtf8(std::string_view bytes);

// A stored name as the extraction sees it, whole: bit 11 set means UTF-8, otherwise the bytes are
// in the system's OEM code page (`decodeOem`).
using OemDecoder = std::u16string (*)(std::string_view bytes);
std::u16string DecodeStoredName(std::string_view bytes, bool utf8, OemDecoder decodeOem);

}  // namespace archive
