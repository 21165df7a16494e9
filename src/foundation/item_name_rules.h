#pragma once
// Windows' rules for the names of items: what the system would let us create but Explorer and
// most programs could not open, rename or delete afterwards. One table, used both to refuse such
// names before anything is made and to turn stored archive names into usable ones.

#include <optional>
#include <string>
#include <string_view>

namespace slib {

enum class NameProblem {
    kNone,
    kEmpty,               // "" (a doubled separator, or nothing after the last one)
    kReservedDevice,      // CON, PRN, AUX, NUL, COM1-9, LPT1-9, CONIN$, CONOUT$, any case/extension
    kTrailingDotOrSpace,  // "x." or "x " (the system strips them, so the item cannot be named)
    kColon,               // "a:b" names a stream of "a", not an item
    kForbiddenCharacter,  // < > " | ? * or a control character
    kNul,                 // U+0000: cuts the name wherever a program reads it
};

// The first rule one name component (no separators) breaks; kNone when it is usable.
// "." and ".." are not names and report kTrailingDotOrSpace.
NameProblem CheckNameComponent(std::u16string_view component);

// Length of the reserved device stem at the start of `component` (3, 4 or 6 characters), or 0
// when the component is no device name. "aux.txt" gives 3, "CONOUT$" 7, "auxiliary" 0.
size_t ReservedDeviceStem(std::u16string_view component);

// The first unusable component of an absolute path ("C:\a\b", "\\server\share\a", with or
// without the "\\?\" or "\\?\UNC\" prefix); the drive, server and share are not checked.
struct UnusableComponent {
    std::u16string component;
    NameProblem problem;
};
std::optional<UnusableComponent> FindUnusableComponent(std::u16string_view path);

// A usable name for `component`: "<>:"|?*" and control characters become "_", every trailing dot
// and space becomes "_", and a reserved device stem gets "_" after it ("aux.txt" -> "aux_.txt",
// "CON" -> "CON_"). A usable component comes back unchanged. NUL is not handled here: a name
// holding one is refused, not repaired (callers check kNul first).
std::u16string MakeNameComponentUsable(std::u16string_view component);

}  // namespace slib
