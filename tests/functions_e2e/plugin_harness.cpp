#include "plugin_harness.h"

#include <windows.h>

#include "fmhost/host_objects.h"
#include "fmhost/value_format.h"

namespace vftest {

namespace {

std::wstring BesideTheTest(const wchar_t* relative) {
    std::wstring path(MAX_PATH, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, &path[0], static_cast<DWORD>(path.size()));
    path.resize(length);
    return path.substr(0, path.find_last_of(L"\\/") + 1) + relative;
}

}  // namespace

std::wstring ShippedPlugin() {
    return BesideTheTest(L"Vantafile.fmx64");
}
std::wstring ProbePlugin() {
    return BesideTheTest(L"probe\\VantafileProbe.fmx64");
}
std::wstring UnlockedProbePlugin() {
    return BesideTheTest(L"probe\\VantafileProbeUnlocked.fmx64");
}

TypedValue Evaluate(const std::u16string& expression) {
    using namespace fmhost::driver;
    ExprEnvPtr env(Checked([](FmxErr& err) { return FM_ExprEnv_Constructor1(err); }));
    TextPtr text = MakeText(expression);
    DataPtr data(Checked([](FmxErr& err) { return FM_Data_Constructor1(err); }));
    TypedValue out;
    out.error =
        Checked([&](FmxErr& err) { return FM_ExprEnv_Evaluate(env.get(), *text, *data, err); });
    if (out.error == 0) {
        out.type = Checked([&](FmxErr& err) { return FM_Data_GetNativeType(data.get(), err); });
        out.text = FormatValue(*data);
    }
    return out;
}

std::u16string Utf16(const std::string& utf8) {
    return fmhost::driver::FromUtf8(utf8);
}
std::string Utf8(const std::u16string& utf16) {
    return fmhost::driver::ToUtf8(utf16);
}

}  // namespace vftest
