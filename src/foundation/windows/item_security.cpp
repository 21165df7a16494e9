#include "foundation/windows/item_security.h"

#include "foundation/exception.h"
#include "foundation/path_normal_form.h"

namespace slib {
namespace security_detail {

namespace {

PSID EveryonePsid() {
    static SidBytes everyone = EveryoneSid();
    return everyone.data();
}

PSID TrusteeSid(Whose whose, const ItemSecurity& security) {
    switch (whose) {
        case Whose::kOwner:
            return security.owner;
        case Whose::kGroup:
            return security.group;
        default:
            return EveryonePsid();
    }
}

SidBytes BytesOf(PSID sid) {
    const auto* bytes = static_cast<const uint8_t*>(sid);
    return SidBytes(bytes, bytes + GetLengthSid(sid));
}

// What the system answers where GetEffectiveRightsFromAclW cannot: the same evaluation over the
// entries, for the trustee's SID and Everyone.
ACCESS_MASK EvaluatedMask(Whose whose, const ItemSecurity& security) {
    if (security.dacl == nullptr) {
        return ~ACCESS_MASK{0};  // no DACL: everyone may do everything
    }
    std::vector<SidBytes> sids{EveryoneSid()};
    if (PSID own = TrusteeSid(whose, security); own != nullptr) {
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

ItemSecurity ReadSecurity(HANDLE item, SECURITY_INFORMATION parts, const char* message) {
    ItemSecurity security;
    const DWORD result =
        GetSecurityInfo(item, SE_FILE_OBJECT, parts, &security.owner, &security.group,
                        &security.dacl, nullptr, security.descriptor.put());
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
    TRUSTEE_W trustee{};
    trustee.pMultipleTrustee = nullptr;
    trustee.MultipleTrusteeOperation = NO_MULTIPLE_TRUSTEE;
    trustee.TrusteeForm = TRUSTEE_IS_SID;
    trustee.TrusteeType = whose == Whose::kOwner ? TRUSTEE_IS_USER : TRUSTEE_IS_GROUP;
    trustee.ptstrName = static_cast<LPWSTR>(TrusteeSid(whose, security));
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

ACCESS_MASK EffectiveMask(Whose whose, const ItemSecurity& security) {
    // Without a DACL, or without the trustee's SID (file systems that keep no security), there
    // is nothing the system could look up.
    if (security.dacl == nullptr || TrusteeSid(whose, security) == nullptr) {
        return EvaluatedMask(whose, security);
    }
    TRUSTEE_W trustee = Trustee(whose, security);
    ACCESS_MASK mask = 0;
    if (GetEffectiveRightsFromAclW(security.dacl, &trustee, &mask) != ERROR_SUCCESS) {
        return EvaluatedMask(whose, security);
    }
    return mask;
}

std::vector<BYTE> DaclAddingRights(Whose whose, const ItemSecurity& security, uint32_t rights,
                                   const char* message) {
    PSID sid = TrusteeSid(whose, security);
    if (security.dacl == nullptr || sid == nullptr) {
        return {};  // no DACL: everyone may do everything already; a new one would restrict
    }
    const ACCESS_MASK held = EffectiveMask(whose, security);
    const ACCESS_MASK missing = AccessMaskAddingRights(held, rights) & ~held;
    if (missing == 0) {
        return {};
    }
    ACL_SIZE_INFORMATION size{};
    if (!GetAclInformation(security.dacl, &size, sizeof size, AclSizeInformation)) {
        ThrowLastError(message, GetLastError());
    }
    const DWORD revision = security.dacl->AclRevision;
    std::vector<BYTE> buffer(size.AclBytesInUse + sizeof(ACCESS_ALLOWED_ACE) + GetLengthSid(sid));
    auto* acl = reinterpret_cast<PACL>(buffer.data());
    bool granted = false;
    auto grant = [&] {
        granted = AddAccessAllowedAceEx(acl, revision, 0, missing, sid) != FALSE;
        return granted;
    };
    bool ok = InitializeAcl(acl, static_cast<DWORD>(buffer.size()), revision) != FALSE;
    for (DWORD index = 0; ok && index < size.AceCount; ++index) {
        void* ace = nullptr;
        ok = GetAce(security.dacl, index, &ace) != FALSE;
        if (!ok) {
            break;
        }
        const auto* header = static_cast<const ACE_HEADER*>(ace);
        // Explicit entries come before inherited ones: a new grant goes last among them.
        if (!granted && (header->AceFlags & INHERITED_ACE) != 0 && !grant()) {
            ok = false;
            break;
        }
        ok = AddAce(acl, revision, MAXDWORD, ace, header->AceSize) != FALSE;
        // The trustee's own plain grant on this item takes the missing rights in place.
        if (ok && !granted && header->AceType == ACCESS_ALLOWED_ACE_TYPE && header->AceFlags == 0 &&
            EqualSid(&static_cast<ACCESS_ALLOWED_ACE*>(ace)->SidStart, sid)) {
            void* copy = nullptr;
            ok = GetAce(acl, index, &copy) != FALSE;
            if (ok) {
                static_cast<ACCESS_ALLOWED_ACE*>(copy)->Mask |= missing;
                granted = true;
            }
        }
    }
    if (!ok || (!granted && !grant())) {
        ThrowLastError(message, GetLastError());
    }
    return buffer;
}

}  // namespace security_detail
}  // namespace slib
