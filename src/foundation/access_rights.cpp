#include "foundation/access_rights.h"

#include <algorithm>

namespace slib {

uint32_t RightsFromAccessMask(uint32_t mask) {
    uint32_t rights = (mask & AccessRight::kRead) != 0 ? RightsBit::kRead : 0;
    if ((mask & AccessRight::kWrite) != 0) {
        rights |= RightsBit::kWrite;
    }
    if ((mask & AccessRight::kExecute) != 0) {
        rights |= RightsBit::kExecute;
    }
    return rights;
}

uint32_t AccessMaskAddingRights(uint32_t mask, uint32_t rights) {
    if ((rights & RightsBit::kRead) != 0) {
        mask |= AccessRight::kRead;
    }
    if ((rights & RightsBit::kWrite) != 0) {
        mask |= AccessRight::kWrite;
    }
    if ((rights & RightsBit::kExecute) != 0) {
        mask |= AccessRight::kExecute;
    }
    return mask;
}

uint32_t EffectiveAccessMask(const std::vector<AccessEntry>& entries,
                             const std::vector<SidBytes>& trusteeSids) {
    uint32_t granted = 0;
    uint32_t denied = 0;
    for (const AccessEntry& entry : entries) {
        if (entry.inheritOnly || entry.kind == AccessEntry::Kind::kOther ||
            std::find(trusteeSids.begin(), trusteeSids.end(), entry.sid) == trusteeSids.end()) {
            continue;
        }
        if (entry.kind == AccessEntry::Kind::kAllowed) {
            granted |= entry.mask & ~denied;
        } else {
            denied |= entry.mask & ~granted;
        }
    }
    return granted;
}

const SidBytes& EveryoneSid() {
    // Revision 1, one sub-authority, authority 1 (world), sub-authority 0.
    static const SidBytes kEveryone{1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0};
    return kEveryone;
}

}  // namespace slib
