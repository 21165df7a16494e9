#include "shell/lifecycle.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "fmx_constants.h"
#include "resources/resource_ids.h"
#include "shell/extension_version.h"
#include "shell/licensing.h"
#include "shell/newer_host_functions.h"
#include "shell/recheck_timer.h"
#include "shell/registration.h"
#include "shell/resource_text.h"
#include "shell/shell_state.h"
#include "shell/system_engines.h"

namespace fmlib {

namespace {

// Four-character id, "1", preferences offered, reserved, init/shutdown wanted, no idle
// messages, session and file shutdown wanted (staged options are kept per session), reserved.
constexpr char16_t kOptions[] = u"QrvF1YnYnYn";

void WriteResult(FmxExternCallRecord& record, int64_t value) {
    record.result = static_cast<uint64_t>(value);
}

// Zero-terminated UTF-16 whatever the system's wchar_t, cut to the host's capacity as the
// Windows string loader cuts.
void WriteResourceString(uint32_t id, char16_t* buffer, uint64_t capacity) {
    if (capacity == 0) {
        return;
    }
    // Loaded whole, then cut: the host's capacity sizes its buffer, never one of ours.
    std::u16string text = LoadResourceString(id);
    if (text.size() >= capacity) {
        text.resize(static_cast<size_t>(capacity - 1));
    }
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = u'\0';
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
    ReleaseSystemEngines();
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
    auto* buffer = reinterpret_cast<char16_t*>(record.result);
    if (buffer == nullptr) {
        return;
    }
    switch (record.parm1) {
        case fmx::kStrName:
            WriteResourceString(VF_STR_PLUGIN_NAME, buffer, record.parm3);
            break;
        case fmx::kStrPreferences:
            WriteResourceString(VF_STR_DESCRIPTION, buffer, record.parm3);
            break;
        case fmx::kStrOptions:
            std::memcpy(buffer, kOptions, sizeof(kOptions));
            break;
        default:
            break;
    }
}

}  // namespace fmlib
