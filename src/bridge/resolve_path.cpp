#include "bridge/resolve_path.h"

#include "bridge/host_path.h"

namespace bridge {

std::shared_ptr<slib::Path> ResolvePath(const slib::Path& anchor, const FmxText& hostPath) {
    return slib::Path::Parse(HostPathToNative(hostPath), anchor);
}

std::shared_ptr<const slib::String> ResolvePath(const slib::Path& anchor, const FmxText& hostPath,
                                                int style) {
    return ResolvePath(anchor, hostPath)->format(style, anchor);
}

}  // namespace bridge
