#include "picture/windows/gdiplus_session.h"

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/windows/unique_handles.h"

namespace slib {
namespace {

// Made once and never destroyed: a static owner's destructor would shut GDI+ down at DLL detach,
// under the loader lock. The host's shutdown message is where it ends.
UniqueGdiplusToken& Token() {
    static auto* token = new UniqueGdiplusToken;
    return *token;
}

}  // namespace

void StartGdiplus() {
    if (Token()) {
        return;
    }
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok || token == 0) {
        Throw(kUnclassified, "Cannot start the picture engine");
    }
    Token().reset(token);
}

void ShutdownGdiplus() {
    Token().reset();
}

}  // namespace slib
