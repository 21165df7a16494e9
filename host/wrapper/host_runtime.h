// The one emulated host of this process: its settings, its session (globals, fonts), the
// plug-in functions known to the calculation engine and the calculation context in which
// calculations run.
#pragma once

#include <memory>
#include <mutex>
#include <string>

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
    // Back to a fresh start: default settings, a new session (no globals), an empty
    // registration log. Plug-in functions stay registered. Only while nothing is evaluating.
    void Reset();

    fmhost::Session& CurrentSession() { return *session_; }
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
    std::unique_ptr<fmhost::Session> session_;
    fmhost::FunctionRegistry registry_;
    Registrations registrations_;
    HostContext context_;
};

}  // namespace fmwrapper
