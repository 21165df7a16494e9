#include "foundation/windows/shell_dialog_flags.h"

#include "foundation/windows/interactive_desktop.h"

namespace slib {

FILEOP_FLAGS FileOperationFlags() {
    // No FOF_ALLOWUNDO: deletions bypass the recycle bin.
    const FILEOP_FLAGS always = FOF_SILENT | FOF_NOCONFIRMATION;
    return file_manager_detail::HasInteractiveDesktop() ? always : always | FOF_NOERRORUI;
}

}  // namespace slib
