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
// The same through an item already open (with READ_CONTROL).
ItemSecurity ReadSecurity(HANDLE item, SECURITY_INFORMATION parts, const char* message);
// The parts the rights of `whose` are read from: its SID (owner or group) and the DACL.
SECURITY_INFORMATION RightsParts(Whose whose);
// Everyone by its well-known SID (names are translated on localised systems); the owner and the
// group by the SID of the descriptor.
TRUSTEE_W Trustee(Whose whose, const ItemSecurity& security);

// The allowed and denied entries of an ACL, in order.
std::vector<AccessEntry> EntriesOf(PACL dacl);
// GetEffectiveRightsFromAclW for the trustee. Whenever the system cannot answer (Wine does not
// implement it; a DACL it finds invalid; a SID it cannot resolve), the same evaluation is made
// over the DACL's entries for the trustee's SID and Everyone.
ACCESS_MASK EffectiveMask(Whose whose, const ItemSecurity& security);
// The DACL that also grants the trustee the rights of `rights` it does not hold yet: every entry
// of the old one kept as it is (inherited ones stay inherited), the missing rights added to the
// trustee's own explicit grant or, without one, in a new explicit grant placed before the
// inherited entries. Empty when nothing is missing or the item has no DACL (which grants
// everything): then nothing is to be written.
// A refusal while building it throws `message` with the system's code.
std::vector<BYTE> DaclAddingRights(Whose whose, const ItemSecurity& security, uint32_t rights,
                                   const char* message);

}  // namespace security_detail
}  // namespace slib
