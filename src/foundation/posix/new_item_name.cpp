<<<<<<< HEAD
// A Linux name may hold any byte but "/" and NUL: none of the Windows naming rules (device
// names, trailing dots and spaces, reserved characters) apply, so every name the path itself can
// carry is usable. A NUL or an unpaired surrogate is refused when the path becomes bytes, a name
// too long by the call that creates it.
=======
// Linux names are bytes with only "/" and NUL excluded: none of Windows' naming rules (devices,
// trailing dots, colons) makes a new item unusable here, so every name passes. A NUL never
// reaches the system: ItemPathBytes refuses it with -50 at the operation itself.

>>>>>>> linux-items
#include "foundation/new_item_name.h"

namespace slib {

void RequireUsableNewItem(const String&) {}

}  // namespace slib
