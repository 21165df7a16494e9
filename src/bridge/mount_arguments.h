// The arguments of VFile_Mount, read by their count:
//   1: URL                      3: URL ; user name ; password
//   2: URL ; mount path         4: URL ; mount path ; user name ; password
// Arguments past the fourth are ignored. Values are taken as text; absent ones stay null.
#pragma once

#include <memory>

#include "fmx_functions.h"
#include "foundation/utf16_string.h"

namespace bridge {

struct MountArguments {
    std::shared_ptr<const slib::String> url;
    std::shared_ptr<const slib::String> mountPath;
    std::shared_ptr<const slib::String> user;
    std::shared_ptr<const slib::String> password;
};

// Raises -50 "No URL to mount" when there is no argument at all.
MountArguments ReadMountArguments(const FmxDataVect& args);

}  // namespace bridge
