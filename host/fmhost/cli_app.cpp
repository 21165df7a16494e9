#include "cli_app.h"

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "console.h"
#include "core/wide_text.h"
#include "host_driver.h"
#include "process_usage.h"
#include "script_reader.h"
#include "value_format.h"
#include "verbose_report.h"

namespace fmhost::cli {
namespace {

using driver::Evaluation;

constexpr int kExitOk = 0;
constexpr int kExitCalculationFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitPluginFailed = 3;
constexpr uint8_t kIdleUserActive = 1;

bool ReadWholeFile(const std::wstring& path, std::string& content) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenForReading(path), std::fclose);
    if (!file)
        return false;
    char buffer[65536];
    size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof(buffer), file.get())) > 0)
        content.append(buffer, got);
    return std::ferror(file.get()) == 0;
}

class Runner {
  public:
    Runner(const Options& options, const Streams& streams) : options_(options), io_(streams) {}

    int Run();

  private:
    bool Configure();
    bool LoadPlugins();
    bool EvaluateInputs();
    void EvaluateLines(bool prompt);
    void Evaluate(const std::u16string& calculation);
    void EndSession(uint64_t session);
    void Echo(const std::u16string& calculation);
    void Print(const Evaluation& result);
    void Shutdown();

    const Options& options_;
    Streams io_;
    driver::Host host_;
    size_t logShown_ = 0;
    // Taken at the first counted calculation (after --warm-up ones), once the script is read:
    // its text is no growth of ours.
    std::optional<ProcessUsage> before_;
    uint32_t evaluated_ = 0;
    // Scripts stay in memory until the report: their memory is held before the first calculation
    // and must still be held after the last, or its release would hide a leak.
    std::vector<std::string> scriptTexts_;
    std::vector<std::vector<ScriptBlock>> scriptBlocks_;
    bool anyFailed_ = false;
};

int Runner::Run() {
    if (!Configure())
        return kExitUsage;
    if (!LoadPlugins()) {
        Shutdown();
        return kExitPluginFailed;
    }
    if (options_.callFault.n != 0 && !options_.callFault.fromLoad) {
        host_.FailCall(options_.callFault.n, options_.callFault.code, kFmhostFaultEachFunctionCall);
    }
    const bool inputsReadable = EvaluateInputs();
    if (before_) {
        const ProcessUsage after = MeasureProcessUsage();
        const std::string start =
            options_.warmUp == 0
                ? std::string("before the first calculation")
                : "after " + std::to_string(options_.warmUp) + " warm-up calculations";
        std::fprintf(io_.err, "fmhost: %s: %s\n", start.c_str(),
                     DescribeUsage(*before_, nullptr).c_str());
        std::fprintf(io_.err, "fmhost: after the last calculation: %s\n",
                     DescribeUsage(after, &*before_).c_str());
    }
    Shutdown();
    if (!inputsReadable)
        return kExitUsage;
    return anyFailed_ ? kExitCalculationFailed : kExitOk;
}

bool Runner::Configure() {
    host_.SetApplicationVersion(options_.applicationVersion);
    bool fileOk = true;
    switch (options_.file) {
        case FileChoice::kDefault:
            break;
        case FileChoice::kLocal:
            fileOk = host_.SetFile(kFmhostFileLocal, options_.fileLocation);
            break;
        case FileChoice::kNone:
            fileOk = host_.SetFile(kFmhostFileNone);
            break;
        case FileChoice::kNetwork:
            fileOk = host_.SetFile(kFmhostFileNetwork, options_.fileLocation);
            break;
    }
    if (!fileOk) {
        std::fprintf(io_.err, "fmhost: the database location is empty\n");
        return false;
    }
    for (const auto& [id, error] : options_.registrationFaults)
        host_.FailRegistration(id, error);
    if (options_.filePathFault != 0)
        host_.FailFilePath(options_.filePathFault);
    if (options_.callFault.n != 0 && options_.callFault.fromLoad) {
        host_.FailCall(options_.callFault.n, options_.callFault.code, kFmhostFaultFromNow);
    }
    if (options_.verbose) {
        const std::u16string path = host_.FilePath();
        std::fprintf(
            io_.err, "fmhost: Get(FilePath) %s\n",
            path.empty() ? "fails with error 100 (no database)" : driver::ToUtf8(path).c_str());
    }
    return true;
}

bool Runner::LoadPlugins() {
    for (const std::wstring& path : options_.plugins) {
        driver::Plugin& plugin =
            host_.LoadPlugin(path, options_.extensionVersion, options_.applicationKind);
        if (options_.verbose) {
            ReportPlugin(io_.err, path, plugin, options_.extensionVersion, options_.applicationKind,
                         options_.applicationVersion);
            const auto log = host_.RegistrationLog();
            ReportRegistrations(io_.err, log, logShown_);
            logShown_ = log.size();
        }
        if (!plugin.Enabled()) {
            const std::u16string path16 = Utf16FromWide(path);
            std::fprintf(io_.err, "fmhost: plug-in %s %s\n", driver::ToUtf8(path16).c_str(),
                         DescribeFailure(plugin).c_str());
            return false;
        }
        if (options_.preferences && options_.verbose) {
            std::fprintf(io_.err, "fmhost:   preferences %s\n",
                         plugin.SendPreferences() ? "sent" : "not asked for (character 6)");
        } else if (options_.preferences) {
            plugin.SendPreferences();
        }
    }
    if (options_.verbose && !options_.plugins.empty())
        ReportFunctions(io_.err, host_.Functions());
    return true;
}

bool Runner::EvaluateInputs() {
    if (options_.inputs.empty()) {
        EvaluateLines(options_.prompt || io_.inIsTerminal);
        return true;
    }
    for (const Input& input : options_.inputs) {
        switch (input.kind) {
            case Input::Kind::kCalculation:
                Evaluate(input.value);
                continue;
            case Input::Kind::kSession:
                host_.UseSession(input.session);
                continue;
            case Input::Kind::kEndSession:
                EndSession(input.session);
                continue;
            case Input::Kind::kScript:
                break;
        }
        std::string& content = scriptTexts_.emplace_back();
        if (!ReadWholeFile(WideFromUtf16(input.value), content)) {
            std::fprintf(io_.err, "fmhost: cannot read the script %s\n",
                         driver::ToUtf8(input.value).c_str());
            return false;
        }
        for (const ScriptBlock& block : scriptBlocks_.emplace_back(SplitScript(content)))
            Evaluate(block.calculation);
    }
    return true;
}

// A prompt reads one calculation per line; piped input is read as a script.
void Runner::EvaluateLines(bool prompt) {
    std::string all;
    char buffer[4096];
    while (true) {
        if (prompt) {
            std::fputs("fmhost> ", io_.out);
            std::fflush(io_.out);
        }
        std::string line;
        bool gotLine = false;
        while (std::fgets(buffer, sizeof(buffer), io_.in) != nullptr) {
            gotLine = true;
            line += buffer;
            if (!line.empty() && line.back() == '\n')
                break;
        }
        if (!gotLine)
            break;
        if (!prompt) {
            all += line;
            continue;
        }
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
            line.pop_back();
        if (line == "exit" || line == "quit")
            break;
        if (line.find_first_not_of(" \t") == std::string::npos)
            continue;
        Evaluate(driver::FromUtf8(line));
    }
    if (prompt)
        std::fputs("\n", io_.out);
    for (const ScriptBlock& block : SplitScript(all))
        Evaluate(block.calculation);
}

void Runner::Evaluate(const std::u16string& calculation) {
    if (options_.verbose && !before_ && evaluated_ == options_.warmUp) {
        before_ = MeasureProcessUsage();
    }
    ++evaluated_;
    if (options_.echo)
        Echo(calculation);
    if (options_.threads <= 1) {
        Print(host_.Evaluate(calculation));
    } else {
        std::vector<Evaluation> results(static_cast<size_t>(options_.threads));
        std::vector<std::thread> threads;
        for (size_t i = 0; i < results.size(); ++i) {
            threads.emplace_back([&, i] {
                try {
                    results[i] = host_.Evaluate(calculation);
                } catch (...) {
                    results[i].error = -1;
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        for (const Evaluation& result : results)
            Print(result);
    }
    for (auto& plugin : host_.Plugins())
        plugin->SendIdle(kIdleUserActive);
}

void Runner::EndSession(uint64_t session) {
    const bool ended = host_.EndSession(session);
    if (options_.verbose) {
        std::fprintf(io_.err, "fmhost: session %llu %s\n", static_cast<unsigned long long>(session),
                     ended ? "ended" : "was not open: nothing to end");
    }
}

void Runner::Echo(const std::u16string& calculation) {
    std::string line;
    for (char c : driver::ToUtf8(calculation) + "\n") {
        if (c != '\r' && c != '\n') {
            line += c;
            continue;
        }
        std::fprintf(io_.out, "> %s\n", line.c_str());
        line.clear();
    }
    std::fflush(io_.out);
}

void Runner::Print(const Evaluation& result) {
    if (result.error != 0) {
        anyFailed_ = true;
        std::fprintf(io_.err, "error %d\n", result.error);
        std::fflush(io_.err);
        return;
    }
    std::fwrite(result.text.data(), 1, result.text.size(), io_.out);
    std::fputc('\n', io_.out);
    std::fflush(io_.out);
}

void Runner::Shutdown() {
    auto& plugins = host_.Plugins();
    for (auto it = plugins.rbegin(); it != plugins.rend(); ++it) {
        const bool wasEnabled = (*it)->Enabled();
        (*it)->Unload();
        if (options_.verbose && wasEnabled) {
            std::fprintf(io_.err, "fmhost: shutdown (plug-in %zu)\n",
                         static_cast<size_t>(plugins.rend() - it));
            const auto log = host_.RegistrationLog();
            ReportRegistrations(io_.err, log, logShown_);
            logShown_ = log.size();
            if ((*it)->Purged() != 0) {
                std::fprintf(io_.err, "fmhost:   %u registrations left behind, withdrawn\n",
                             (*it)->Purged());
            }
        }
    }
}

}  // namespace

int Run(const Options& options, const Streams& streams) {
    try {
        Runner runner(options, streams);
        return runner.Run();
    } catch (const std::exception& e) {
        std::fprintf(streams.err, "fmhost: %s\n", e.what());
        return kExitUsage;
    }
}

}  // namespace fmhost::cli
