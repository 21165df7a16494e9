#include "foundation/windows/item_security.h"

#include "foundation/exception.h"
#include "foundation/path_normal_form.h"

namespace slib {
namespace security_detail {

namespace {

SidBytes BytesOf(PSID sid) {
    const auto* bytes = static_cast<const uint8_t*>(sid);
    return SidBytes(bytes, bytes + GetLengthSid(sid));
}

// What the system answers where GetEffectiveRightsFromAclW is not implemented (Wine): the same
// evaluation over the entries, for the trustee's SID and Everyone.
ACCESS_MASK EvaluatedMask(Whose whose, const ItemSecurity& security) {
    if (security.dacl == nullptr) {
        return ~ACCESS_MASK{0};  // no DACL: everyone may do everything
    }
    std::vector<SidBytes> sids{EveryoneSid()};
    PSID own = whose == Whose::kOwner   ? security.owner
               : whose == Whose::kGroup ? security.group
                                        : nullptr;
    if (own != nullptr) {
        sids.push_back(BytesOf(own));
    }
    return EffectiveAccessMask(EntriesOf(security.dacl), sids);
}

}  // namespace

std::vector<wchar_t> PathBuffer(const String& path) {
    const std::u16string longPath = WithLongPathPrefix(path.units());
    const auto* text = reinterpret_cast<const wchar_t*>(longPath.c_str());
    return std::vector<wchar_t>(text, text + longPath.size() + 1);
}

ItemSecurity ReadSecurity(const String& path, SECURITY_INFORMATION parts, const char* message) {
    ItemSecurity security;
    std::vector<wchar_t> buffer = PathBuffer(path);
    const DWORD result =
        GetNamedSecurityInfoW(buffer.data(), SE_FILE_OBJECT, parts, &security.owner,
                              &security.group, &security.dacl, nullptr, security.descriptor.put());
    if (result != ERROR_SUCCESS) {
        ThrowLastError(message, result);
    }
    return security;
}

SECURITY_INFORMATION RightsParts(Whose whose) {
    switch (whose) {
        case Whose::kOwner:
            return OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
        case Whose::kGroup:
            return GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
        default:
            return DACL_SECURITY_INFORMATION;
    }
}

TRUSTEE_W Trustee(Whose whose, const ItemSecurity& security) {
    static wchar_t everyone[] = L"EVERYONE";
    TRUSTEE_W trustee{};
    trustee.pMultipleTrustee = nullptr;
    trustee.MultipleTrusteeOperation = NO_MULTIPLE_TRUSTEE;
    if (whose == Whose::kEveryone) {
        trustee.TrusteeForm = TRUSTEE_IS_NAME;
        trustee.TrusteeType = TRUSTEE_IS_GROUP;
        trustee.ptstrName = everyone;
    } else {
        trustee.TrusteeForm = TRUSTEE_IS_SID;
        trustee.TrusteeType = whose == Whose::kOwner ? TRUSTEE_IS_USER : TRUSTEE_IS_GROUP;
        trustee.ptstrName =
            static_cast<LPWSTR>(whose == Whose::kOwner ? security.owner : security.group);
    }
    return trustee;
}

std::vector<AccessEntry> EntriesOf(PACL dacl) {
    std::vector<AccessEntry> entries;
    ACL_SIZE_INFORMATION size{};
    if (!GetAclInformation(dacl, &size, sizeof size, AclSizeInformation)) {
        return entries;
    }
    for (DWORD index = 0; index < size.AceCount; ++index) {
        void* ace = nullptr;
        if (!GetAce(dacl, index, &ace)) {
            continue;
        }
        const auto* header = static_cast<const ACE_HEADER*>(ace);
        const bool inheritOnly = (header->AceFlags & INHERIT_ONLY_ACE) != 0;
        if (header->AceType == ACCESS_ALLOWED_ACE_TYPE) {
            auto* allowed = static_cast<ACCESS_ALLOWED_ACE*>(ace);
            entries.push_back({AccessEntry::Kind::kAllowed, allowed->Mask, inheritOnly,
                               BytesOf(&allowed->SidStart)});
        } else if (header->AceType == ACCESS_DENIED_ACE_TYPE) {
            auto* denied = static_cast<ACCESS_DENIED_ACE*>(ace);
            entries.push_back({AccessEntry::Kind::kDenied, denied->Mask, inheritOnly,
                               BytesOf(&denied->SidStart)});
        }
    }
    return entries;
}

ACCESS_MASK EffectiveMask(Whose whose, const ItemSecurity& security, const char* message) {
    // Without a DACL, or without the trustee's SID (file systems that keep no security), there
    // is nothing the system could look up.
    if (security.dacl == nullptr || (whose == Whose::kOwner && security.owner == nullptr) ||
        (whose == Whose::kGroup && security.group == nullptr)) {
        return EvaluatedMask(whose, security);
    }
    TRUSTEE_W trustee = Trustee(whose, security);
    ACCESS_MASK mask = 0;
    const DWORD result = GetEffectiveRightsFromAclW(security.dacl, &trustee, &mask);
    if (result == ERROR_INVALID_FUNCTION || result == ERROR_CALL_NOT_IMPLEMENTED) {
        return EvaluatedMask(whose, security);
    }
    if (result != ERROR_SUCCESS) {
        ThrowLastError(message, result);
    }
    return mask;
}

UniqueAcl DaclAddingRights(Whose whose, const ItemSecurity& security, uint32_t rights,
                           const char* message) {
    if (security.dacl == nullptr) {
        return UniqueAcl();  // everyone may do everything already; a new DACL would restrict
    }
    EXPLICIT_ACCESS_W access{};
    access.grfAccessPermissions =
        AccessMaskAddingRights(EffectiveMask(whose, security, message), rights);
    access.grfAccessMode = GRANT_ACCESS;
    access.grfInheritance = NO_INHERITANCE;
    access.Trustee = Trustee(whose, security);
    UniqueAcl merged;
    const DWORD result = SetEntriesInAclW(1, &access, security.dacl, merged.put());
    if (result != ERROR_SUCCESS) {
        ThrowLastError(message, result);
    }
    return merged;
}

}  // namespace security_detail
}  // namespace slib
