// What the soak needs from the system around the host: its temporary folder, laying out and
// listing items without the code under test, and the plug-in file it loads. windows/ and posix/
// hold the bodies.
#pragma once

#include <set>
#include <string>

namespace vf::soak {

std::u16string TempFolder();
// `folder` and `name` joined by the system's separator.
std::u16string Join(const std::u16string& folder, const std::u16string& name);
void MakeFolder(const std::u16string& path);
void WriteBytes(const std::u16string& path, const std::string& bytes);
void RemoveFile(const std::u16string& path);
std::set<std::u16string> Names(const std::u16string& folder);
// A folder in the host's path syntax, ending in "/".
std::string HostForm(const std::u16string& folder);
std::u16string ProcessTag();
// The plug-in this build made, beside the test program.
std::string PluginBesideTest();
// A crash of a started host then ends it at once (no system debugger holding it).
void EndCrashesAtOnce();

}  // namespace vf::soak
