#pragma once
// Under Wine, the permission bits the host system keeps for a file ("600", "775"), read by the
// host's own stat through the file's Unix path; nullopt where there is no such host (Windows).

#include <optional>
#include <string>

namespace slib {
namespace test {

std::optional<std::string> HostUnixMode(const std::u16string& windowsPath);
// chmod on the host; false where there is no such host.
bool SetHostUnixMode(const std::u16string& windowsPath, const std::string& mode);

}  // namespace test
}  // namespace slib
