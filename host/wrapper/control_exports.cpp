// The control interface of fmhost_control.h. Every entry point is a boundary: nothing escapes.
#include <algorithm>
#include <cstring>
#include <cwchar>

#include "core/wide_text.h"
#include "fault_injection.h"
#include "fmhost_control.h"
#include "host_runtime.h"
#include "host_system.h"
#include "path_syntax.h"
#include "plugin_loader.h"

using fmwrapper::HostRuntime;

struct FmhostPlugin {
    std::unique_ptr<fmwrapper::LoadedPlugin> loaded;
};

namespace {

std::u16string FromWide(const wchar_t* text) {
    return fmhost::Utf16FromWide(text);
}

// Lengths are in wchar_t units, the caller's own.
uint32_t CopyOut(const std::u16string& text, wchar_t* buffer, uint32_t capacity) {
    try {
        const std::wstring wide = fmhost::WideFromUtf16(text);
        if (buffer != nullptr && capacity > 0) {
            const size_t count = std::min<size_t>(wide.size(), capacity - 1);
            std::memcpy(buffer, wide.data(), count * sizeof(wchar_t));
            buffer[count] = L'\0';
        }
        return static_cast<uint32_t>(wide.size());
    } catch (...) {
        return 0;
    }
}

template <size_t N>
void CopyText(const std::u16string& text, wchar_t (&out)[N]) {
    CopyOut(text, out, N);
}

void Describe(const fmwrapper::FunctionRecord& function, FmhostRegistration& out) {
    out = FmhostRegistration{};
    for (int i = 0; i < 4; ++i) {
        out.pluginId[i] = static_cast<char>(function.pluginId >> (24 - 8 * i));
    }
    out.functionId = function.functionId;
    out.minArgs = function.minArgs;
    out.maxArgs = function.maxArgs;
    out.flags = function.flags;
    CopyText(function.name, out.name);
    CopyText(function.prototype, out.prototype);
}

}  // namespace

extern "C" {

void FMHost_Reset(void) {
    try {
        HostRuntime::Instance().Reset();
        fmwrapper::faults::ClearAll();
    } catch (...) {
    }
}

int32_t FMHost_UseSession(uint64_t id) {
    if (id == 0)
        return -1;
    try {
        HostRuntime::Instance().UseSession(id);
        return 0;
    } catch (...) {
        return -1;
    }
}

int32_t FMHost_EndSession(uint64_t id) {
    try {
        return HostRuntime::Instance().EndSession(id) ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

void FMHost_SetApplicationVersion(const wchar_t* version) {
    if (version == nullptr)
        return;
    try {
        fmwrapper::HostSettings settings = HostRuntime::Instance().Settings();
        settings.applicationVersion = FromWide(version);
        HostRuntime::Instance().SetSettings(std::move(settings));
    } catch (...) {
    }
}

int32_t FMHost_SetFile(int32_t mode, const wchar_t* location) {
    try {
        fmwrapper::HostSettings settings = HostRuntime::Instance().Settings();
        switch (mode) {
            case kFmhostFileLocal:
                if (location == nullptr || *location == L'\0')
                    return -1;
                settings.fileMode = fmwrapper::FileMode::kLocal;
                settings.filePath =
                    fmwrapper::HostFilePath(fmwrapper::AbsoluteNativePath(FromWide(location)));
                break;
            case kFmhostFileNone:
                settings.fileMode = fmwrapper::FileMode::kNone;
                settings.filePath.clear();
                break;
            case kFmhostFileNetwork:
                if (location == nullptr || *location == L'\0')
                    return -1;
                settings.fileMode = fmwrapper::FileMode::kNetwork;
                settings.filePath = fmwrapper::NetworkFilePath(FromWide(location));
                break;
            default:
                return -1;
        }
        HostRuntime::Instance().SetSettings(std::move(settings));
        return 0;
    } catch (...) {
        return -1;
    }
}

uint32_t FMHost_GetFilePath(wchar_t* buffer, uint32_t capacity) {
    try {
        return CopyOut(HostRuntime::Instance().Settings().filePath, buffer, capacity);
    } catch (...) {
        return 0;
    }
}

void FMHost_FailCall(uint32_t n, int32_t code, int32_t mode) {
    const bool known = mode == kFmhostFaultFromNow || mode == kFmhostFaultEachFunctionCall;
    fmwrapper::faults::ArmCallFault(known ? n : 0, code,
                                    static_cast<fmwrapper::faults::CallFaultMode>(mode));
}

void FMHost_FailRegistration(int16_t functionId, int16_t error) {
    try {
        fmwrapper::faults::SetRegistrationFault(functionId, error);
    } catch (...) {
    }
}

void FMHost_FailFilePath(int16_t error) {
    fmwrapper::faults::SetFilePathFault(error);
}

FmhostPlugin* FMHost_LoadPlugin(const wchar_t* path, int16_t extnVersion, uint8_t applicationKind) {
    try {
        fmwrapper::LoadOptions options;
        options.extnVersion = extnVersion;
        options.applicationKind = applicationKind;
        options.applicationVersion = HostRuntime::Instance().Settings().applicationVersion;
        auto plugin = std::make_unique<FmhostPlugin>();
        plugin->loaded =
            fmwrapper::LoadedPlugin::Load(path != nullptr ? FromWide(path) : u"", options);
        return plugin.release();
    } catch (...) {
        return nullptr;
    }
}

int32_t FMHost_PluginState(const FmhostPlugin* plugin) {
    return plugin ? static_cast<int32_t>(plugin->loaded->State()) : kFmhostPluginNotLoaded;
}

uint32_t FMHost_PluginSystemError(const FmhostPlugin* plugin) {
    return plugin ? plugin->loaded->SystemError() : 0;
}

int32_t FMHost_PluginInitSent(const FmhostPlugin* plugin) {
    return plugin && plugin->loaded->InitSent() ? 1 : 0;
}

int64_t FMHost_PluginInitResult(const FmhostPlugin* plugin) {
    return plugin ? plugin->loaded->InitResult() : 0;
}

uint32_t FMHost_PluginPurged(const FmhostPlugin* plugin) {
    return plugin ? static_cast<uint32_t>(plugin->loaded->Purged()) : 0;
}

// Copies what the plug-in answered at load time: no message is sent.
uint32_t FMHost_PluginString(const FmhostPlugin* plugin, int32_t stringId, wchar_t* buffer,
                             uint32_t capacity) {
    if (plugin == nullptr)
        return CopyOut(u"", buffer, capacity);
    switch (stringId) {
        case 128:
            return CopyOut(plugin->loaded->Name(), buffer, capacity);
        case 129:
            return CopyOut(plugin->loaded->Description(), buffer, capacity);
        case 131:
            return CopyOut(plugin->loaded->Options(), buffer, capacity);
        default:
            return CopyOut(u"", buffer, capacity);
    }
}

int32_t FMHost_SendIdle(FmhostPlugin* plugin, uint8_t level) {
    try {
        return plugin && plugin->loaded->SendIdle(level) ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

int32_t FMHost_SendPreferences(FmhostPlugin* plugin) {
    try {
        return plugin && plugin->loaded->SendPreferences() ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

int32_t FMHost_SendSessionShutdown(FmhostPlugin* plugin, uint64_t id) {
    try {
        return plugin && plugin->loaded->SendSessionShutdown(id) ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

void FMHost_UnloadPlugin(FmhostPlugin* plugin) {
    if (plugin == nullptr)
        return;
    try {
        plugin->loaded->Unload();
    } catch (...) {
    }
    delete plugin;
}

uint32_t FMHost_FunctionCount(void) {
    try {
        return static_cast<uint32_t>(HostRuntime::Instance().Functions().Current().size());
    } catch (...) {
        return 0;
    }
}

int32_t FMHost_FunctionAt(uint32_t index, FmhostRegistration* out) {
    if (out == nullptr)
        return 0;
    try {
        const auto current = HostRuntime::Instance().Functions().Current();
        if (index >= current.size())
            return 0;
        Describe(current[index], *out);
        out->kind = current[index].scriptStep ? kFmhostRegisterScriptStep : kFmhostRegisterFunction;
        return 1;
    } catch (...) {
        return 0;
    }
}

uint32_t FMHost_RegistrationLogSize(void) {
    try {
        return static_cast<uint32_t>(HostRuntime::Instance().Functions().Log().size());
    } catch (...) {
        return 0;
    }
}

int32_t FMHost_RegistrationLogAt(uint32_t index, FmhostRegistration* out) {
    if (out == nullptr)
        return 0;
    try {
        const auto log = HostRuntime::Instance().Functions().Log();
        if (index >= log.size())
            return 0;
        Describe(log[index].function, *out);
        out->kind = static_cast<int32_t>(log[index].kind);
        out->result = log[index].result;
        out->injected = log[index].injected ? 1 : 0;
        return 1;
    } catch (...) {
        return 0;
    }
}

void FMHost_ClearRegistrationLog(void) {
    try {
        HostRuntime::Instance().Functions().ClearLog();
    } catch (...) {
    }
}

}  // extern "C"
