#pragma once
// Reading an item's security descriptor and evaluating or extending its DACL for one trustee:
// the pieces the file manager's owner, group and rights operations are built from.

#include <windows.h>

#include <aclapi.h>

#include <vector>

#include "foundation/access_rights.h"
#include "foundation/utf16_string.h"
#include "foundation/windows/unique_handles.h"

namespace slib {
namespace security_detail {

enum class Whose { kOwner, kGroup, kEveryone };

// The descriptor and the parts of it that were asked for (null when not asked for or absent).
struct ItemSecurity {
    UniqueSecurityDescriptor descriptor;
    PSID owner = nullptr;
    PSID group = nullptr;
    PACL dacl = nullptr;
};

// The security API wants a writable copy of the path.
std::vector<wchar_t> PathBuffer(const String& path);

// GetNamedSecurityInfoW for `parts`; a refusal throws `message` with the returned code.
ItemSecurity ReadSecurity(const String& path, SECURITY_INFORMATION parts, const char* message);
// The parts the rights of `whose` are read from: its SID (owner or group) and the DACL.
SECURITY_INFORMATION RightsParts(Whose whose);
// Everyone by the name "EVERYONE"; the owner and the group by the SID of the descriptor.
TRUSTEE_W Trustee(Whose whose, const ItemSecurity& security);

// The allowed and denied entries of an ACL, in order.
std::vector<AccessEntry> EntriesOf(PACL dacl);
// GetEffectiveRightsFromAclW for the trustee. Where the system does not implement it (Wine
// answers ERROR_INVALID_FUNCTION), the same evaluation is made over the DACL's entries for the
// trustee's SID and Everyone. Any other refusal throws `message` with the returned code.
ACCESS_MASK EffectiveMask(Whose whose, const ItemSecurity& security, const char* message);
// A new DACL: the old one merged with one grant to the trustee of its effective mask plus the
// rights in `rights`, not inherited; none for an item without a DACL, which grants everything.
// A refusal throws `message` with the returned code.
UniqueAcl DaclAddingRights(Whose whose, const ItemSecurity& security, uint32_t rights,
                           const char* message);

}  // namespace security_detail
}  // namespace slib
