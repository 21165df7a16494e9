#include "host_system.h"

#include <limits.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

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

// "." and ".." go by the text alone, as Windows resolves them, links or not.
std::u16string AbsoluteNativePath(std::u16string_view path) {
    std::u16string full(path);
    if (full.empty() || full.front() != u'/') {
        char current[PATH_MAX];
        if (getcwd(current, sizeof current) == nullptr)
            return full;
        full = fmhost::Utf8ToUtf16(current) + u"/" + full;
    }
    std::vector<std::u16string> names;
    size_t start = 0;
    while (start <= full.size()) {
        size_t end = full.find(u'/', start);
        if (end == std::u16string::npos)
            end = full.size();
        const std::u16string name = full.substr(start, end - start);
        if (name == u"..") {
            if (!names.empty())
                names.pop_back();
        } else if (!name.empty() && name != u".") {
            names.push_back(name);
        }
        start = end + 1;
    }
    std::u16string normal;
    for (const std::u16string& name : names)
        normal += u"/" + name;
    const bool folder = full.back() == u'/' && !normal.empty();
    return normal.empty() ? u"/" : folder ? normal + u"/" : normal;
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
