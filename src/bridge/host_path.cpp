#include "bridge/host_path.h"

#include "bridge/host_path_syntax.h"

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "shell/host_text.h"

namespace bridge {

std::u16string HostPathToNative(const std::u16string& hostPath) {
    if (hostPath.compare(0, 6, u"fmnet:") == 0) {
        slib::Throw(slib::kBadParameter, "FileMaker network path cannot be used");
    }
    if (hostPath.empty()) {
        slib::Throw(slib::kItemNotFound, "Empty string is not valid path");
    }
    return HostSyntaxToNative(hostPath);
}

std::u16string HostPathToNative(const FmxText& hostPath) {
    return HostPathToNative(fmlib::TextUnits(hostPath));
}

}  // namespace bridge
