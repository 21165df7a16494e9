#include "bridge/host_path.h"

#include <algorithm>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "shell/host_text.h"

namespace bridge {

std::u16string HostPathToNative(const std::u16string& hostPath) {
    if (hostPath.compare(0, 6, u"fmnet:") == 0) {
        slib::Throw(slib::kBadParameter, "FileMaker network path cannot be used");
    }
    if (hostPath.empty()) {
        slib::Throw(slib::kItemNotFound, "Empty string is not valid path");
    }
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

std::u16string HostPathToNative(const FmxText& hostPath) {
    return HostPathToNative(fmlib::TextUnits(hostPath));
}

}  // namespace bridge
