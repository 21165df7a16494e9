// The test's own hold on the fixture plug-in, and the settings it reads, through the system.
#pragma once

#include <string>

namespace fixture_test {

// HostFixture.fmx64 (HostFixture.fmx on Linux) beside the test executable.
std::wstring FixturePath();
// Sets the environment variable `name` for this process; null removes it.
void SetSetting(const char* name, const char* value);

void* OpenFixture();
void* FixtureSymbol(void* fixture, const char* name);
void CloseFixture(void* fixture);
// A path no plug-in is at.
std::wstring MissingPluginPath();

// A local database's path in this system's form, and Get(FilePath) for it.
struct LocalDatabase {
    std::wstring path;
    std::string filePath;
};
LocalDatabase LocalDatabaseExample();

// Get(SystemPlatform) here, and the form of a folder in host syntax (a drive on Windows).
struct HostFacts {
    std::string systemPlatform;
    std::string folderPattern;  // ECMAScript regular expression
};
HostFacts ThisHost();

}  // namespace fixture_test
