#include "bridge/host_path_syntax.h"

namespace bridge {

namespace {

bool IsAsciiLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

}  // namespace

std::u16string HostSyntaxToNative(const std::u16string& hostPath) {
    const size_t first = hostPath.find(u'/');
    // At least one letter, then the colon, then the path.
    if (first == std::u16string::npos || first < 2 || hostPath[first - 1] != u':') {
        return hostPath;
    }
    for (size_t index = 0; index + 1 < first; ++index) {
        if (!IsAsciiLetter(hostPath[index])) {
            return hostPath;
        }
    }
    return hostPath.substr(first);
}

}  // namespace bridge
