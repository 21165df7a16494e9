// The one emulated host of this process: its settings, its sessions (globals, fonts; one
// current, in which calculations run, like the clients of a server taking turns), the plug-in
// functions known to the calculation engine and the calculation context.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "core/eval_context.h"
#include "core/function_registry.h"
#include "core/session.h"
#include "registrations.h"

namespace fmwrapper {

enum class FileMode { kLocal, kNone, kNetwork };

struct HostSettings {
    std::u16string applicationVersion = u"Pro 22.0v1";
    FileMode fileMode = FileMode::kLocal;
    // What Get(FilePath) answers: "file:/C:/Data/Solution.fmp12" or "fmnet:/host/Solution.fmp12".
    std::u16string filePath;
};

// The calculating database's context: the host's answers to Get() live here.
class HostContext final : public fmhost::EvalContext {
  public:
    fmhost::Session& GetSession() override;
    const fmhost::FunctionRegistry* Functions() const override;
    fmhost::ErrorCode GetValue(fmhost::GetFunction function, fmhost::Value& result) override;
};

class HostRuntime {
  public:
    static HostRuntime& Instance();

    HostSettings Settings() const;
    void SetSettings(HostSettings settings);
    // Back to a fresh start: default settings, session 1 alone and current (no globals), an
    // empty registration log. Plug-in functions stay registered. Only while nothing is
    // evaluating.
    void Reset();

    fmhost::Session& CurrentSession();
    // Makes session `id` (not 0) current, starting it when it is not open. Only between
    // calculations.
    void UseSession(uint64_t id);
    // Forgets session `id` and its globals; false when it is not open. When it was the current
    // one, calculations go on in a fresh session of the same id, as the host reuses ids. Only
    // between calculations.
    bool EndSession(uint64_t id);
    // The open sessions, in order of id.
    std::vector<uint64_t> SessionIds() const;
    fmhost::FunctionRegistry& Registry() { return registry_; }
    Registrations& Functions() { return registrations_; }
    HostContext& DefaultContext() { return context_; }
    // Nonzero while the database has a file; what FM_ExprEnv_FileID reports.
    uint64_t FileId() const;

  private:
    HostRuntime();
    static HostSettings DefaultSettings();

    mutable std::mutex mutex_;
    HostSettings settings_;
    std::map<uint64_t, std::unique_ptr<fmhost::Session>> sessions_;
    fmhost::Session* current_ = nullptr;
    fmhost::FunctionRegistry registry_;
    Registrations registrations_;
    HostContext context_;
};

}  // namespace fmwrapper
