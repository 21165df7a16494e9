#include "shell/system_engines.h"

#include "foundation/windows/rich_edit_library.h"
#include "picture/windows/gdiplus_session.h"

namespace fmlib {

void ReleaseSystemEngines() {
    slib::ShutdownGdiplus();
    slib::ReleaseRichEditLibrary();
}

}  // namespace fmlib
