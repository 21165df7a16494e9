#include "shell/lifecycle.h"

#include <windows.h>

#include <climits>
#include <cstring>

#include "fmx_constants.h"
#include "foundation/windows/rich_edit_library.h"
#include "picture/windows/gdiplus_session.h"
#include "resources/resource_ids.h"
#include "shell/extension_version.h"
#include "shell/licensing.h"
#include "shell/newer_host_functions.h"
#include "shell/recheck_timer.h"
#include "shell/registration.h"
#include "shell/shell_state.h"

namespace fmlib {

namespace {

// Four-character id, "1", preferences offered, reserved, init/shutdown wanted, no idle
// messages, session and file shutdown wanted (staged options are kept per session), reserved.
constexpr char16_t kOptions[] = u"QrvF1YnYnYn";

void WriteResult(FmxExternCallRecord& record, int64_t value) {
    record.result = static_cast<uint64_t>(value);
}

}  // namespace

void HandleInit(FmxExternCallRecord& record, const FunctionTable& functions) {
    if (!IsSupportedExtensionVersion(record.extnVersion)) {
        WriteResult(record, fmx::kBadExtnVersion);
        return;
    }
    RememberHostExtensionVersion(record.extnVersion);
    licensing::Initialize(record.parm1);
    StartRecheckTimer();
    if (!RegisterFunctions(functions)) {
        StopRecheckTimer();
        WriteResult(record, fmx::kDoNotEnable);
        return;
    }
    gEnabled = true;
    WriteResult(record, kPluginExtensionVersion);
}

void HandleShutdown(const FunctionTable& functions) {
    gEnabled = false;
    UnregisterFunctions(functions);
    StopRecheckTimer();
    slib::ShutdownGdiplus();
    slib::ReleaseRichEditLibrary();
}

void HandlePreferences() {
    if (gInPreferences) {
        return;
    }
    gInPreferences = true;
    struct Reset {
        ~Reset() { gInPreferences = false; }
    } reset;
    licensing::OpenRegistrationWindow();
}

void HandleGetString(FmxExternCallRecord& record) {
    auto* buffer = reinterpret_cast<wchar_t*>(record.result);
    if (buffer == nullptr) {
        return;
    }
    // A capacity of 0 would make the loader hand back a pointer instead of copying.
    const int capacity = record.parm3 > INT_MAX ? INT_MAX : static_cast<int>(record.parm3);
    const auto instance = reinterpret_cast<HINSTANCE>(record.instanceID);
    switch (record.parm1) {
        case fmx::kStrName:
            if (capacity > 0) {
                LoadStringW(instance, VF_STR_PLUGIN_NAME, buffer, capacity);
            }
            break;
        case fmx::kStrPreferences:
            if (capacity > 0) {
                LoadStringW(instance, VF_STR_DESCRIPTION, buffer, capacity);
            }
            break;
        case fmx::kStrOptions:
            std::memcpy(buffer, kOptions, sizeof(kOptions));
            break;
        default:
            break;
    }
}

}  // namespace fmlib
