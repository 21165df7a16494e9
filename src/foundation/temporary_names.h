#pragma once
// Names of our own beside a file: "~vf-<process>-<number><suffix>". Short and fixed in shape, so
// they fit whatever the file's own name; fresh within the process; recognisable to anyone
// cleaning up after a power cut, and by their suffix telling what they hold.

#include <string>

#include "foundation/path_style.h"

namespace slib {

// What a file's new contents are written under until they are whole.
constexpr char16_t kTemporarySuffix[] = u".partial";

// A fresh name in the folder of `path` (the form the system gets), ending in `suffix`
// (".partial", ...).
std::u16string NameBeside(const std::u16string& path, const std::u16string& suffix,
                          PathStyle style = NativePathStyle());

// Whether a bare file name is one NameBeside makes with `suffix`.
bool IsNameOfOurs(const std::u16string& name, const std::u16string& suffix);

// A temporary name beside `target` for its new contents: "~vf-*.partial".
std::u16string TemporaryNameBeside(const std::u16string& target,
                                   PathStyle style = NativePathStyle());

// Whether a bare file name is one TemporaryNameBeside makes.
bool IsTemporaryName(const std::u16string& name);

}  // namespace slib
