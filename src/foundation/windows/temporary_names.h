#pragma once
// Names of our own beside a file: "~vf-<process>-<number><suffix>". Short and fixed in shape, so
// they fit whatever the file's own name; fresh within the process; recognisable to anyone
// cleaning up after a power cut, and by their suffix telling what they hold.

#include <string>

namespace slib {

// A fresh name in the folder of `path` (its long form), ending in `suffix` (".partial", ...).
std::u16string NameBeside(const std::u16string& path, const std::u16string& suffix);

// Whether a bare file name is one NameBeside makes with `suffix`.
bool IsNameOfOurs(const std::u16string& name, const std::u16string& suffix);

}  // namespace slib
