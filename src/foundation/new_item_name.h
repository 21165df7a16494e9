#pragma once
// The naming rules applied where a function is about to create an item.

#include "foundation/utf16_string.h"

namespace slib {

// For a path that names nothing yet: RequireUsableItemPath (-50, the problem named). An existing
// item keeps working whatever another tool named it, so it passes.
void RequireUsableNewItem(const String& path);

}  // namespace slib
