#include "bridge/path_context.h"

#include <utility>

#include "bridge/anchor.h"
#include "bridge/resolve_path.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/new_item_name.h"
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
    std::u16string resolved = ResolvePath(anchor(), fmlib::DataVectAtAsText(args, index))->text();
    // An "fsspec:" form that names nothing resolves to an empty path. Handed to the shell, that
    // would mean the current folder: a copy there replaces a same-named file without asking.
    if (resolved.empty()) {
        slib::Throw(slib::kItemNotFound, "Empty string is not valid path");
    }
    return slib::String(std::move(resolved));
}

slib::String PathContext::newItemArgument(const FmxDataVect& args, uint32_t index) {
    slib::String path = pathArgument(args, index);
    slib::RequireUsableNewItem(path);
    return path;
}

std::pair<slib::String, slib::String> PathContext::sourceAndTarget(const FmxDataVect& args) {
    fmlib::RequireTextParameter(args, 0);
    fmlib::RequireTextParameter(args, 1);
    slib::String source = pathArgument(args, 0);
    return {std::move(source), newItemArgument(args, 1)};
}

void PathContext::refuseAnchorHolder(const slib::String& path, const char* message) {
    if (!anchor().isDefaultAnchor()) {
        slib::FileManager().refuseHolderOf(path, slib::String(anchor().text()), message);
    }
}

}  // namespace bridge
