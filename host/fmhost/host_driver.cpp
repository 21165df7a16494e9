#include "host_driver.h"

#include "core/wide_text.h"
#include "host_objects.h"
#include "value_format.h"

namespace fmhost::driver {
namespace {

Registration FromEntry(const FmhostRegistration& entry) {
    Registration out;
    out.kind = entry.kind;
    out.pluginId = std::string(entry.pluginId, 4);
    out.functionId = entry.functionId;
    out.minArgs = entry.minArgs;
    out.maxArgs = entry.maxArgs;
    out.flags = entry.flags;
    out.result = entry.result;
    out.injected = entry.injected != 0;
    out.name = Utf16FromWide(entry.name);
    out.prototype = Utf16FromWide(entry.prototype);
    return out;
}

template <typename Count, typename At>
std::vector<Registration> ReadAll(Count count, At at) {
    std::vector<Registration> out;
    const uint32_t n = count();
    for (uint32_t i = 0; i < n; ++i) {
        FmhostRegistration entry{};
        if (at(i, &entry))
            out.push_back(FromEntry(entry));
    }
    return out;
}

}  // namespace

Plugin::~Plugin() {
    Unload();
}

void Plugin::Unload() {
    if (handle_ == nullptr)
        return;
    FMHost_UnloadPlugin(handle_);
    handle_ = nullptr;
}

std::u16string Plugin::String(int32_t id) const {
    const uint32_t length = FMHost_PluginString(handle_, id, nullptr, 0);
    std::wstring buffer(length + 1, L'\0');
    FMHost_PluginString(handle_, id, &buffer[0], length + 1);
    buffer.resize(length);
    return Utf16FromWide(buffer);
}

Host::Host() {
    FMHost_Reset();
}

Host::~Host() {
    while (!plugins_.empty())
        plugins_.pop_back();
}

void Host::SetApplicationVersion(const std::u16string& version) {
    FMHost_SetApplicationVersion(WideFromUtf16(version).c_str());
}

bool Host::SetFile(int32_t mode, const std::wstring& location) {
    return FMHost_SetFile(mode, location.c_str()) == 0;
}

std::u16string Host::FilePath() const {
    const uint32_t length = FMHost_GetFilePath(nullptr, 0);
    std::wstring buffer(length + 1, L'\0');
    FMHost_GetFilePath(&buffer[0], length + 1);
    buffer.resize(length);
    return Utf16FromWide(buffer);
}

Plugin& Host::LoadPlugin(const std::wstring& path, int16_t extnVersion, uint8_t applicationKind) {
    FmhostPlugin* handle = FMHost_LoadPlugin(path.c_str(), extnVersion, applicationKind);
    if (handle == nullptr)
        throw std::bad_alloc();
    plugins_.push_back(std::make_unique<Plugin>(handle));
    return *plugins_.back();
}

bool Host::EndSession(uint64_t id) {
    if (!FMHost_EndSession(id))
        return false;
    for (const auto& plugin : plugins_)
        plugin->SendSessionShutdown(id);
    return true;
}

Evaluation Host::Evaluate(const std::u16string& expression) const {
    ExprEnvPtr env(Checked([](FmxErr& err) { return FM_ExprEnv_Constructor1(err); }));
    TextPtr text = MakeText(expression);
    DataPtr data(Checked([](FmxErr& err) { return FM_Data_Constructor1(err); }));
    Evaluation out;
    out.error =
        Checked([&](FmxErr& err) { return FM_ExprEnv_Evaluate(env.get(), *text, *data, err); });
    if (out.error == 0)
        out.text = FormatValue(*data);
    return out;
}

std::vector<Registration> Host::Functions() const {
    return ReadAll(FMHost_FunctionCount, FMHost_FunctionAt);
}

std::vector<Registration> Host::RegistrationLog() const {
    return ReadAll(FMHost_RegistrationLogSize, FMHost_RegistrationLogAt);
}

}  // namespace fmhost::driver
