#pragma once
// The three-bit rights value of the attribute functions (read 4, write 2, execute 1) and the
// Windows access rights that stand for its bits, plus the evaluation of a discretionary ACL for
// one trustee. Portable: the ACL arrives as a plain list, so the rules are tested natively.
//
// The bits stand for exactly these rights, not for the file read/write/execute rights: "read" is
// the right to read the security descriptor, "write" the right to take ownership.

#include <cstdint>
#include <vector>

namespace slib {

using SidBytes = std::vector<uint8_t>;

struct AccessRight {
    static constexpr uint32_t kRead = 0x00020000;     // READ_CONTROL
    static constexpr uint32_t kWrite = 0x00080000;    // WRITE_OWNER
    static constexpr uint32_t kExecute = 0x20000000;  // GENERIC_EXECUTE
};

struct RightsBit {
    static constexpr uint32_t kRead = 4;
    static constexpr uint32_t kWrite = 2;
    static constexpr uint32_t kExecute = 1;
};

// The rights value an access mask grants.
uint32_t RightsFromAccessMask(uint32_t mask);
// `mask` with the access rights of the bits set in `rights` added; nothing is ever removed.
uint32_t AccessMaskAddingRights(uint32_t mask, uint32_t rights);

// One entry of a discretionary ACL. Entry kinds other than allowed and denied (audit, object
// and callback entries) are kOther and grant nothing.
struct AccessEntry {
    enum class Kind { kAllowed, kDenied, kOther };
    Kind kind;
    uint32_t mask;
    bool inheritOnly;  // applies only to children, never to the item itself
    SidBytes sid;
};

// The access a trustee holds through `entries`, evaluated in ACL order as the system does: an
// allowed entry grants what no earlier denied entry took away, a denied entry takes away what no
// earlier allowed entry granted. `trusteeSids` are the SIDs that speak for the trustee (its own
// and its groups'); entries for other SIDs and inherit-only entries are skipped.
uint32_t EffectiveAccessMask(const std::vector<AccessEntry>& entries,
                             const std::vector<SidBytes>& trusteeSids);

// S-1-1-0, the well-known group every account belongs to.
const SidBytes& EveryoneSid();

}  // namespace slib
