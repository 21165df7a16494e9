#include "../fixture_library.h"

#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>

#include <cstdlib>

namespace fixture_test {
namespace {

std::string Narrow(const std::wstring& path) {
    return std::string(path.begin(), path.end());
}

}  // namespace

std::wstring FixturePath() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    const std::string full(path, length > 0 ? static_cast<size_t>(length) : 0);
    const std::string folder = full.substr(0, full.find_last_of('/') + 1);
    return std::wstring(folder.begin(), folder.end()) + L"HostFixture.fmx";
}

void SetSetting(const char* name, const char* value) {
    if (value != nullptr) {
        setenv(name, value, 1);
    } else {
        unsetenv(name);
    }
}

void* OpenFixture() {
    return dlopen(Narrow(FixturePath()).c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* FixtureSymbol(void* fixture, const char* name) {
    return dlsym(fixture, name);
}

void CloseFixture(void* fixture) {
    dlclose(fixture);
}

std::wstring MissingPluginPath() {
    return L"/no/such/plugin.fmx";
}

LocalDatabase LocalDatabaseExample() {
    return {L"/srv/Data/Solution.fmp12", "filelinux:/srv/Data/Solution.fmp12"};
}

HostFacts ThisHost() {
    return {"8", "^/(.*/)?$"};
}

}  // namespace fixture_test
