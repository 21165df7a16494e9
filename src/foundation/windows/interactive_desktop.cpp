#include "foundation/windows/interactive_desktop.h"

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/windows/unique_handles.h"

namespace slib {
namespace file_manager_detail {
namespace {

bool WindowStationIsVisible() {
    USEROBJECTFLAGS flags{};
    HWINSTA station = GetProcessWindowStation();
    if (station == nullptr ||
        !GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof(flags), nullptr)) {
        // Unknown is not invisible: the window test below still has its say.
        return true;
    }
    return (flags.dwFlags & WSF_VISIBLE) != 0;
}

// Wine without a display still calls its window station visible, but cannot make a window.
bool TopLevelWindowCanBeCreated() {
    const UniqueWindow probe(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                                             nullptr, GetModuleHandleW(nullptr), nullptr));
    return probe.valid();
}

}  // namespace

void RequireInteractiveDesktop() {
    if (!WindowStationIsVisible() || !TopLevelWindowCanBeCreated()) {
        Throw(kUnclassified, "No interactive desktop to show the dialog on");
    }
}

}  // namespace file_manager_detail
}  // namespace slib
