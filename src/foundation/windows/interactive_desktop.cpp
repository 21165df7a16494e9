#include "foundation/windows/interactive_desktop.h"

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include "foundation/no_desktop.h"
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

// The test hook: VF_TEST_DESKTOP=none or =interactive forces the answer; unset, the system's.
enum class ForcedDesktop { kNone, kNo, kYes };

ForcedDesktop ForcedByEnvironment() {
    wchar_t value[16] = {};
    const DWORD length = GetEnvironmentVariableW(L"VF_TEST_DESKTOP", value, 16);
    if (length == 0 || length >= 16) {
        return ForcedDesktop::kNone;
    }
    if (lstrcmpiW(value, L"none") == 0) {
        return ForcedDesktop::kNo;
    }
    if (lstrcmpiW(value, L"interactive") == 0) {
        return ForcedDesktop::kYes;
    }
    return ForcedDesktop::kNone;
}

}  // namespace

bool HasInteractiveDesktop() {
    switch (ForcedByEnvironment()) {
        case ForcedDesktop::kNo:
            return false;
        case ForcedDesktop::kYes:
            return true;
        case ForcedDesktop::kNone:
            break;
    }
    return WindowStationIsVisible() && TopLevelWindowCanBeCreated();
}

void RequireInteractiveDesktop() {
    if (!HasInteractiveDesktop()) {
        ThrowNoInteractiveDesktop();
    }
}

}  // namespace file_manager_detail
}  // namespace slib
