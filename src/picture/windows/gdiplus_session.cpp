#include "picture/windows/gdiplus_session.h"

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/windows/unique_handles.h"

namespace slib {
namespace {

UniqueGdiplusToken& Token() {
    static UniqueGdiplusToken token;
    return token;
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
