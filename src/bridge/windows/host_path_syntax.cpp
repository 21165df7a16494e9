#include "bridge/host_path_syntax.h"

#include <algorithm>

#include "foundation/file_manager.h"

namespace bridge {

std::u16string HostSyntaxToNative(const std::u16string& hostPath) {
    const size_t first = hostPath.find(u'/');
    if (first == std::u16string::npos || first + 1 == hostPath.size()) {
        return hostPath;
    }
    const size_t second = hostPath.find(u'/', first + 1);
    if (second == std::u16string::npos) {
        return hostPath;
    }
    // Only a volume segment makes this host syntax: "a/b/c" stays a relative native path.
    const slib::String segment(hostPath.substr(first + 1, second - first - 1));
    if (!slib::FileManager().isMountedVolume(segment)) {
        return hostPath;
    }
    std::u16string native = hostPath.substr(first + 1);
    std::replace(native.begin(), native.end(), u'/', u'\\');
    return native;
}

}  // namespace bridge
