#include "bridge/resolve_path.h"

#include "bridge/host_path.h"
#include "bridge/system_path_rules.h"

namespace bridge {

std::shared_ptr<slib::Path> ResolvePath(const slib::Path& anchor, const FmxText& hostPath) {
    return ParseSystemPath(HostPathToNative(hostPath), anchor);
}

std::shared_ptr<const slib::String> ResolvePath(const slib::Path& anchor, const FmxText& hostPath,
                                                int style) {
    return FormatSystemPath(*ResolvePath(anchor, hostPath), style, anchor);
}

}  // namespace bridge
