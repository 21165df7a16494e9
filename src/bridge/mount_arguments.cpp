#include "bridge/mount_arguments.h"

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "shell/host_data.h"
#include "shell/value_conversion.h"

namespace bridge {

MountArguments ReadMountArguments(const FmxDataVect& args) {
    const uint32_t count = fmlib::DataVectSize(args);
    if (count == 0) {
        slib::Throw(slib::kBadParameter, "No URL to mount");
    }
    const auto text = [&args](uint32_t index) {
        return fmlib::ToFoundationString(fmlib::DataVectAtAsText(args, index));
    };
    MountArguments read;
    read.url = text(0);
    switch (count) {
        case 1:
            break;
        case 2:
            read.mountPath = text(1);
            break;
        case 3:
            read.user = text(1);
            read.password = text(2);
            break;
        default:
            read.mountPath = text(1);
            read.user = text(2);
            read.password = text(3);
            break;
    }
    return read;
}

}  // namespace bridge
