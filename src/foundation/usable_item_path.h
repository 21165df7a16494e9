#pragma once
// Refusing, before anything is made, a path whose names Windows would let us create but that
// Explorer and most programs could not open, rename or delete afterwards (item_name_rules.h).

#include <string_view>

namespace slib {

// Throws -50 with a message naming the problem when a component of `path` (the drive, server and
// share aside) breaks a naming rule:
//   "Name is reserved by Windows for a device"          CON, aux.txt, COM1.log, ...
//   "Name cannot end with a dot or a space"             "a.", "b "
//   "Name cannot contain a colon"                       "a.txt:x" (an alternate data stream)
//   "Name contains a character Windows does not allow"  < > " | ? * and control characters
void RequireUsableItemPath(std::u16string_view path);

}  // namespace slib
