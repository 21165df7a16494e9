// Loading a plug-in the way the host does. The plug-in's options string decides which
// lifecycle messages it gets: character 8 "Y" asks for init and shutdown, 9 for idle, 6 for
// preferences, 10 for the session and file shutdown messages.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "fmx_record.h"
#include "library_module.h"

namespace fmwrapper {

struct LoadOptions {
    int16_t extnVersion = 77;
    uint8_t applicationKind = 1;  // desktop application
    std::u16string applicationVersion = u"Pro 22.0v1";
};

enum class PluginState : int32_t {
    kEnabled = 0,
    kRefused = 1,       // init answered -1, -2 or anything below the 64-bit minimum
    kNoEntryPoint = 2,  // loaded, but FMExternCallProc is missing
    kNotLoaded = 3,     // the system could not load it (see SystemError)
    kUnloaded = 4,
};

// The lowest extension version a 64-bit plug-in can answer to init.
constexpr int64_t kMinAcceptedExtnVersion = 53;

class LoadedPlugin {
  public:
    static std::unique_ptr<LoadedPlugin> Load(const std::u16string& path,
                                              const LoadOptions& options);
    ~LoadedPlugin();
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    PluginState State() const { return state_; }
    uint32_t SystemError() const { return systemError_; }
    bool InitSent() const { return initSent_; }
    int64_t InitResult() const { return initResult_; }
    const std::u16string& Name() const { return name_; }
    const std::u16string& Description() const { return description_; }
    const std::u16string& Options() const { return options_; }
    // Registrations the plug-in left behind and the host withdrew (at refusal or unload).
    size_t Purged() const { return purged_; }

    // False (and nothing sent) when the plug-in did not ask for the message.
    bool SendIdle(uint8_t level);
    bool SendPreferences();
    // File shutdown, then session shutdown, for the session `sessionId` (character 10).
    bool SendSessionShutdown(uint64_t sessionId);
    // Session and file shutdown for every open session when asked for, shutdown when init was
    // sent, then the module goes. Safe to call twice.
    void Unload();

  private:
    LoadedPlugin() = default;
    void Start(const std::u16string& path, const LoadOptions& options);
    bool Wants(size_t position) const;
    int64_t Send(uint8_t whichCall, uint8_t parm1, uint64_t parm2, uint64_t parm3,
                 uint64_t result = 0);
    std::u16string QueryString(uint8_t id, uint32_t capacity);
    void Release();

    UniqueLibrary library_;
    FmxExternCallProcFn proc_ = nullptr;
    // One record for the plug-in's lifetime: plug-ins keep its address and read it later.
    FmxExternCallRecord record_{};
    std::u16string hostVersion_;
    std::mutex messageMutex_;

    PluginState state_ = PluginState::kNotLoaded;
    uint32_t systemError_ = 0;
    bool initSent_ = false;
    int64_t initResult_ = 0;
    std::u16string name_;
    std::u16string description_;
    std::u16string options_;
    size_t purged_ = 0;
};

}  // namespace fmwrapper
