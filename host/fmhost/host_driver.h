// Drives the emulated host in FMWrapper.dll from the same process: settings, plug-ins, faults,
// calculations and the registration log. Used by fmhost.exe and by in-process tests.
//
//   fmhost::driver::Host host;                        // fresh host state
//   auto& plugin = host.LoadPlugin(L"Vantafile.fmx64");
//   if (plugin.Enabled()) {
//       fmhost::driver::Evaluation result = host.Evaluate(u"VFile_Version");
//   }                                                 // plug-ins unload with the host
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "wrapper/fmhost_control.h"

namespace fmhost::driver {

struct Evaluation {
    int16_t error = 0;  // 0, or the calculation error number
    std::string text;   // the printed value (value_format.h); empty on error
};

struct Registration {
    int32_t kind = kFmhostRegisterFunction;
    std::string pluginId;
    int16_t functionId = 0;
    int16_t minArgs = 0;
    int16_t maxArgs = -1;
    uint32_t flags = 0;
    int16_t result = 0;
    bool injected = false;
    std::u16string name;
    std::u16string prototype;
};

class Plugin {
  public:
    explicit Plugin(FmhostPlugin* handle) : handle_(handle) {}
    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    int32_t State() const { return FMHost_PluginState(handle_); }
    bool Enabled() const { return State() == kFmhostPluginEnabled; }
    uint32_t SystemError() const { return FMHost_PluginSystemError(handle_); }
    bool InitSent() const { return FMHost_PluginInitSent(handle_) != 0; }
    int64_t InitResult() const { return FMHost_PluginInitResult(handle_); }
    uint32_t Purged() const { return FMHost_PluginPurged(handle_); }
    std::u16string Name() const { return String(128); }
    std::u16string Description() const { return String(129); }
    std::u16string Options() const { return String(131); }

    bool SendIdle(uint8_t level) { return FMHost_SendIdle(handle_, level) != 0; }
    bool SendSessionShutdown(uint64_t id) { return FMHost_SendSessionShutdown(handle_, id) != 0; }
    bool SendPreferences() { return FMHost_SendPreferences(handle_) != 0; }
    // Shutdown messages and unloading; the destructor does it too.
    void Unload();

  private:
    std::u16string String(int32_t id) const;
    FmhostPlugin* handle_;
};

class Host {
  public:
    Host();   // resets the host: default settings, new session, no faults, empty log
    ~Host();  // unloads the plug-ins, newest first
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    void SetApplicationVersion(const std::u16string& version);
    // kFmhostFileLocal with a Windows path, kFmhostFileNone, kFmhostFileNetwork with a URL.
    bool SetFile(int32_t mode, const std::wstring& location = std::wstring());
    std::u16string FilePath() const;

    Plugin& LoadPlugin(const std::wstring& path, int16_t extnVersion = 77,
                       uint8_t applicationKind = 1);
    std::vector<std::unique_ptr<Plugin>>& Plugins() { return plugins_; }

    // Calculations after this run in session `id` (not 0), started when new.
    bool UseSession(uint64_t id) { return FMHost_UseSession(id) == 0; }
    // Session shutdown to every plug-in (those that ask for it), then the session is forgotten;
    // false when it was not open.
    bool EndSession(uint64_t id);

    void FailCall(uint32_t n, int32_t code, int32_t mode) { FMHost_FailCall(n, code, mode); }
    void FailRegistration(int16_t id, int16_t error) { FMHost_FailRegistration(id, error); }
    void FailFilePath(int16_t error) { FMHost_FailFilePath(error); }

    // Thread-safe: calculations may run from several threads at once.
    Evaluation Evaluate(const std::u16string& expression) const;

    std::vector<Registration> Functions() const;
    std::vector<Registration> RegistrationLog() const;
    void ClearRegistrationLog() { FMHost_ClearRegistrationLog(); }

  private:
    std::vector<std::unique_ptr<Plugin>> plugins_;
};

}  // namespace fmhost::driver
