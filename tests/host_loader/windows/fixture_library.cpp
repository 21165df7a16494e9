#include "../fixture_library.h"

#include <windows.h>

namespace fixture_test {

std::wstring FixturePath() {
    wchar_t path[MAX_PATH * 4] = {};
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH * 4);
    std::wstring full(path, length);
    return full.substr(0, full.find_last_of(L"\\/") + 1) + L"HostFixture.fmx64";
}

void SetSetting(const char* name, const char* value) {
    SetEnvironmentVariableA(name, value);
}

void* OpenFixture() {
    return LoadLibraryW(FixturePath().c_str());
}

void* FixtureSymbol(void* fixture, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(fixture), name));
}

void CloseFixture(void* fixture) {
    FreeLibrary(static_cast<HMODULE>(fixture));
}

std::wstring MissingPluginPath() {
    return L"C:\\no\\such\\plugin.fmx64";
}

LocalDatabase LocalDatabaseExample() {
    return {L"C:\\Data\\Solution.fmp12", "file:/C:/Data/Solution.fmp12"};
}

HostFacts ThisHost() {
    return {"-2", "^/[A-Za-z]:/(.*/)?$"};
}

}  // namespace fixture_test
