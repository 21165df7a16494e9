#include "bridge/path_context.h"

#include "bridge/anchor.h"
#include "bridge/resolve_path.h"
#include "shell/arguments.h"
#include "shell/host_data.h"

namespace bridge {

const slib::Path& PathContext::anchor() {
    if (!anchor_) {
        anchor_ = ResolveAnchor(env_);
    }
    return *anchor_;
}

slib::String PathContext::pathArgument(const FmxDataVect& args, uint32_t index) {
    fmlib::RequireTextParameter(args, index);
    return slib::String(ResolvePath(anchor(), fmlib::DataVectAtAsText(args, index))->text());
}

}  // namespace bridge
