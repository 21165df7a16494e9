#include "verbose_report.h"

#include <cinttypes>

#include "core/wide_text.h"
#include "value_format.h"

namespace fmhost::cli {
namespace {

using driver::ToUtf8;

// Line breaks inside a quoted text would break the one-line-per-fact layout.
std::string Quoted(const std::u16string& text) {
    std::string out = "\"";
    for (char c : ToUtf8(text)) {
        if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else {
            out += c;
        }
    }
    return out + "\"";
}

const char* KindName(int32_t kind) {
    switch (kind) {
        case kFmhostRegisterFunction:
            return "register";
        case kFmhostUnregisterFunction:
            return "unregister";
        case kFmhostRegisterScriptStep:
            return "register script step";
        default:
            return "unregister script step";
    }
}

}  // namespace

void ReportPlugin(std::FILE* err, const std::wstring& path, const driver::Plugin& plugin,
                  int16_t extensionVersion, int applicationKind,
                  const std::u16string& applicationVersion) {
    const std::u16string path16 = Utf16FromWide(path);
    std::fprintf(err, "fmhost: plug-in %s\n", ToUtf8(path16).c_str());
    if (plugin.State() == kFmhostPluginNotLoaded || plugin.State() == kFmhostPluginNoEntryPoint) {
        std::fprintf(err, "fmhost:   %s\n", DescribeFailure(plugin).c_str());
        return;
    }
    std::fprintf(err, "fmhost:   options %s\n", Quoted(plugin.Options()).c_str());
    std::fprintf(err, "fmhost:   name %s\n", Quoted(plugin.Name()).c_str());
    std::fprintf(err, "fmhost:   description %s\n", Quoted(plugin.Description()).c_str());
    if (!plugin.InitSent()) {
        std::fprintf(err, "fmhost:   init not sent (options character 8 is not Y)\n");
        return;
    }
    std::fprintf(err,
                 "fmhost:   init (extension version %d, application kind %d, %s) answered "
                 "%" PRId64 ": %s\n",
                 extensionVersion, applicationKind, Quoted(applicationVersion).c_str(),
                 plugin.InitResult(), plugin.Enabled() ? "enabled" : "refused");
}

void ReportRegistrations(std::FILE* err, const std::vector<driver::Registration>& log,
                         size_t from) {
    for (size_t i = from; i < log.size(); ++i) {
        const driver::Registration& entry = log[i];
        std::fprintf(err, "fmhost:   %s %s %d %s -> %d%s\n", KindName(entry.kind),
                     entry.pluginId.c_str(), entry.functionId, ToUtf8(entry.name).c_str(),
                     entry.result, entry.injected ? " (injected)" : "");
    }
}

void ReportFunctions(std::FILE* err, const std::vector<driver::Registration>& functions) {
    std::fprintf(err, "fmhost: %zu functions registered\n", functions.size());
    for (const driver::Registration& f : functions) {
        const std::string maxArgs = f.maxArgs < 0 ? "any" : std::to_string(f.maxArgs);
        std::fprintf(err, "fmhost:   %s %d %s  [arguments %d..%s, flags 0x%08X]%s\n",
                     f.pluginId.c_str(), f.functionId, ToUtf8(f.prototype).c_str(), f.minArgs,
                     maxArgs.c_str(), f.flags,
                     f.kind == kFmhostRegisterScriptStep ? " (script step)" : "");
    }
}

std::string DescribeFailure(const driver::Plugin& plugin) {
    switch (plugin.State()) {
        case kFmhostPluginNotLoaded:
            return "could not be loaded (system error " + std::to_string(plugin.SystemError()) +
                   ")";
        case kFmhostPluginNoEntryPoint:
            return "has no FMExternCallProc entry point";
        case kFmhostPluginRefused:
            return "refused to load: init answered " + std::to_string(plugin.InitResult());
        default:
            return "is not running";
    }
}

}  // namespace fmhost::cli
