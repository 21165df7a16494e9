#include "host_system.h"

#include <limits.h>
#include <unistd.h>

#include <cstdlib>

#include "core/utf.h"

namespace fmwrapper {
namespace {

std::u16string FromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? fmhost::Utf8ToUtf16(value) : std::u16string();
}

// A folder of the user's home; the server's engines run without a desktop, so these are only
// where a plug-in would look.
std::u16string HomeFolder(std::u16string_view below) {
    const std::u16string home = FromEnvironment("HOME");
    return home.empty() ? std::u16string() : home + u"/" + std::u16string(below);
}

}  // namespace

std::u16string AbsoluteNativePath(std::u16string_view path) {
    std::u16string given(path);
    if (!given.empty() && given.front() == u'/')
        return given;
    char current[PATH_MAX];
    if (getcwd(current, sizeof current) == nullptr)
        return given;
    std::u16string folder = fmhost::Utf8ToUtf16(current);
    if (folder.empty() || folder.back() != u'/')
        folder += u'/';
    return folder + given;
}

std::u16string HostFilePath(std::u16string_view absolutePath) {
    return u"filelinux:" + std::u16string(absolutePath);
}

std::u16string HostFolderPath(std::u16string_view folder) {
    std::u16string path(folder);
    if (path.empty() || path.back() != u'/')
        path += u'/';
    return path;
}

std::u16string ExecutableFolder() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    if (length <= 0)
        return {};
    const std::u16string full = fmhost::Utf8ToUtf16(std::string_view(path, length));
    return full.substr(0, full.find_last_of(u'/') + 1);
}

std::u16string TemporaryFolder() {
    const std::u16string folder = FromEnvironment("TMPDIR");
    return folder.empty() ? u"/tmp/" : folder;
}

std::u16string DocumentsFolder() {
    return HomeFolder(u"Documents");
}

std::u16string DesktopFolder() {
    return HomeFolder(u"Desktop");
}

int32_t SystemPlatform() {
    return 8;
}

}  // namespace fmwrapper
