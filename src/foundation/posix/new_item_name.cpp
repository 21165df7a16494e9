// Linux names are bytes with only "/" and NUL excluded: none of Windows' naming rules (devices,
// trailing dots, colons) makes a new item unusable here, so every name passes. A NUL never
// reaches the system: ItemPathBytes refuses it with -50 at the operation itself.

#include "foundation/new_item_name.h"

namespace slib {

void RequireUsableNewItem(const String&) {}

}  // namespace slib
