// What the host answers about the machine it runs on: its folders, its platform number and the
// host syntax of a local database's path, which differ between Windows and Linux.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace fmwrapper {

// `path` made absolute against the current folder; unchanged when the system cannot.
std::u16string AbsoluteNativePath(std::u16string_view path);
// Get(FilePath) of a local database at the absolute `path`: "file:/C:/Data/a.fmp12" on Windows,
// "filelinux:/srv/a.fmp12" on Linux.
std::u16string HostFilePath(std::u16string_view absolutePath);
// A folder in host syntax, always ending in "/".
std::u16string HostFolderPath(std::u16string_view folder);

std::u16string ExecutableFolder();
std::u16string TemporaryFolder();
std::u16string DocumentsFolder();
std::u16string DesktopFolder();

// Get(SystemPlatform): -2 Windows, 8 Linux.
int32_t SystemPlatform();

}  // namespace fmwrapper
