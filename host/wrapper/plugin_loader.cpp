#include "plugin_loader.h"

#include <vector>

#include "export_versions.h"
#include "fault_injection.h"
#include "fmx_constants.h"
#include "host_runtime.h"
#include "module_imports.h"
#include "record_callbacks.h"

namespace fmwrapper {
namespace {

constexpr uint32_t kNameCapacity = 256;
constexpr uint32_t kDescriptionCapacity = 1024;
constexpr uint32_t kOptionsCapacity = 256;
// The language the host asks for its strings in: English (United States), as a Windows
// language id on every system.
constexpr uint64_t kLanguageEnglishUs = 0x0409;

uint64_t SessionId() {
    return HostRuntime::Instance().CurrentSession().Id();
}

}  // namespace

std::unique_ptr<LoadedPlugin> LoadedPlugin::Load(const std::u16string& path,
                                                 const LoadOptions& options) {
    std::unique_ptr<LoadedPlugin> plugin(new LoadedPlugin());
    plugin->Start(path, options);
    return plugin;
}

LoadedPlugin::~LoadedPlugin() {
    Unload();
}

void LoadedPlugin::Start(const std::u16string& path, const LoadOptions& options) {
    // A host of this version would not have these exports, and the system's loader refuses a
    // library whose import it cannot satisfy, before the plug-in runs at all.
    for (const std::string& name : HostImports(path)) {
        const int16_t since = ExportIntroducedIn(name);
        if (since != 0 && since > options.extnVersion) {
            systemError_ = kMissingImportError;
            state_ = PluginState::kNotLoaded;
            return;
        }
    }
    library_ = OpenLibrary(path, systemError_);
    if (!library_) {
        state_ = PluginState::kNotLoaded;
        return;
    }
    proc_ = reinterpret_cast<FmxExternCallProcFn>(
        LibrarySymbol(library_.get(), "FMExternCallProc", systemError_));
    if (proc_ == nullptr) {
        Release();
        state_ = PluginState::kNoEntryPoint;
        return;
    }

    hostVersion_ = options.applicationVersion;
    record_.extnVersion = options.extnVersion;
    record_.unusedID = -1;
    record_.entryPoint = proc_;
    record_.instanceID = reinterpret_cast<uint64_t>(library_.get());
    record_.cStartScript = &StartScriptCallback;
    record_.cCurrentEnv = &CurrentEnvCallback;

    // The options decide which messages follow, so they come first.
    options_ = QueryString(fmx::kStrOptions, kOptionsCapacity);
    name_ = QueryString(fmx::kStrName, kNameCapacity);
    description_ = QueryString(fmx::kStrPreferences, kDescriptionCapacity);
    state_ = PluginState::kEnabled;
    if (!Wants(8))
        return;

    initSent_ = true;
    initResult_ = Send(fmx::kMsgInit, options.applicationKind,
                       reinterpret_cast<uint64_t>(hostVersion_.c_str()), 0);
    if (initResult_ < kMinAcceptedExtnVersion) {
        Release();
        state_ = PluginState::kRefused;
    }
}

bool LoadedPlugin::Wants(size_t position) const {
    return options_.size() >= position && options_[position - 1] == u'Y';
}

int64_t LoadedPlugin::Send(uint8_t whichCall, uint8_t parm1, uint64_t parm2, uint64_t parm3,
                           uint64_t result) {
    std::lock_guard<std::mutex> lock(messageMutex_);
    record_.whichCall = whichCall;
    record_.unsafeCalls = 0;
    record_.parm1 = parm1;
    record_.parm2 = parm2;
    record_.parm3 = parm3;
    record_.result = result;
    faults::PluginCodeScope pluginCode;
    proc_(&record_);
    return static_cast<int64_t>(record_.result);
}

// The plug-in writes UTF-16 into the host's buffer; capacity in units, the last one kept zero.
std::u16string LoadedPlugin::QueryString(uint8_t id, uint32_t capacity) {
    std::vector<char16_t> buffer(capacity + 1, u'\0');
    Send(fmx::kMsgGetString, id, kLanguageEnglishUs, capacity,
         reinterpret_cast<uint64_t>(buffer.data()));
    buffer[capacity] = u'\0';
    return std::u16string(buffer.data());
}

bool LoadedPlugin::SendIdle(uint8_t level) {
    if (state_ != PluginState::kEnabled || !Wants(9))
        return false;
    Send(fmx::kMsgIdle, level, SessionId(), 0);
    return true;
}

bool LoadedPlugin::SendSessionShutdown(uint64_t sessionId) {
    if (state_ != PluginState::kEnabled || !Wants(10))
        return false;
    Send(fmx::kMsgFileShutdown, 0, sessionId, HostRuntime::Instance().FileId());
    Send(fmx::kMsgSessionShutdown, 0, sessionId, 0);
    return true;
}

bool LoadedPlugin::SendPreferences() {
    if (state_ != PluginState::kEnabled || !Wants(6))
        return false;
    Send(fmx::kMsgPreferences, 0, 0, 0);
    return true;
}

void LoadedPlugin::Unload() {
    if (state_ != PluginState::kEnabled)
        return;
    for (const uint64_t sessionId : HostRuntime::Instance().SessionIds())
        SendSessionShutdown(sessionId);
    if (initSent_)
        Send(fmx::kMsgShutdown, 0, 0, 0);
    Release();
    state_ = PluginState::kUnloaded;
}

// Nothing the plug-in registered may stay callable once its code is gone.
void LoadedPlugin::Release() {
    if (proc_ != nullptr)
        purged_ += HostRuntime::Instance().Functions().PurgeModule(
            LibraryContaining(reinterpret_cast<const void*>(proc_)));
    library_.reset();
    proc_ = nullptr;
}

}  // namespace fmwrapper
