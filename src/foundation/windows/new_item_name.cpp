#include "foundation/new_item_name.h"

#include <windows.h>

#include "foundation/item_name_rules.h"
#include "foundation/path_normal_form.h"
#include "foundation/usable_item_path.h"

namespace slib {

void RequireUsableNewItem(const String& path) {
    if (!FindUnusableComponent(path.units())) {
        return;
    }
    // Asked through the prefix, a device name or a trailing dot is taken as the name it is.
    const std::u16string longPath = WithLongPathPrefix(path.units());
    if (GetFileAttributesW(reinterpret_cast<const wchar_t*>(longPath.c_str())) !=
        INVALID_FILE_ATTRIBUTES) {
        return;
    }
    RequireUsableItemPath(path.units());
}

}  // namespace slib
