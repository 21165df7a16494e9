#include "shell/host_error.h"

namespace fmlib {

void ThrowIfHostFailed(const FmxErr& slot) {
    switch (slot.code) {
        case kFmxErrMemory:
            throw HostAllocationError();
        case kFmxErrOther:
            throw std::exception();
        default:
            break;
    }
}

}  // namespace fmlib
