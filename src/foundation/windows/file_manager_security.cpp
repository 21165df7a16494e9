// Owner, group and the three rights values, through the Windows security API. Every descriptor
// and ACL the API allocates is owned by a UniqueResource, so a throw frees it too.

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <vector>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/item_security.h"

namespace slib {

using namespace security_detail;

namespace {

uint32_t GetRights(const String& path, Whose whose) {
    const ItemSecurity security =
        ReadSecurity(path, RightsParts(whose), "Cannot read file security info");
    return RightsFromAccessMask(EffectiveMask(whose, security));
}

// Writes a DACL only when a right is really missing: any write lets the system redo what it
// derives from the DACL (Wine the Unix mode, Windows the inherited entries).
void AddRights(const String& path, Whose whose, uint32_t rights, const char* message) {
    const ItemSecurity security = ReadSecurity(path, RightsParts(whose), message);
    std::vector<BYTE> dacl = DaclAddingRights(whose, security, rights, message);
    if (dacl.empty()) {
        return;
    }
    // The DACL keeps its protection from inheritance, whichever it had.
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    GetSecurityDescriptorControl(security.descriptor.get(), &control, &revision);
    const SECURITY_INFORMATION parts =
        DACL_SECURITY_INFORMATION |
        ((control & SE_DACL_PROTECTED) != 0 ? PROTECTED_DACL_SECURITY_INFORMATION
                                            : UNPROTECTED_DACL_SECURITY_INFORMATION);
    std::vector<wchar_t> buffer = PathBuffer(path);
    const DWORD result =
        SetNamedSecurityInfoW(buffer.data(), SE_FILE_OBJECT, parts, nullptr, nullptr,
                              reinterpret_cast<PACL>(dacl.data()), nullptr);
    if (result != ERROR_SUCCESS) {
        ThrowLastError(message, result);
    }
}

std::shared_ptr<const String> AccountName(const String& path, bool owner) {
    const ItemSecurity security =
        ReadSecurity(path, owner ? OWNER_SECURITY_INFORMATION : GROUP_SECURITY_INFORMATION,
                     "Cannot read file security info");
    PSID sid = owner ? security.owner : security.group;
    if (sid == nullptr) {
        ThrowLastError("Cannot get file owner", ERROR_NONE_MAPPED);
    }
    DWORD nameLength = 0;
    DWORD domainLength = 0;
    SID_NAME_USE use;
    LookupAccountSidW(nullptr, sid, nullptr, &nameLength, nullptr, &domainLength, &use);
    std::vector<wchar_t> name(nameLength + 1);
    std::vector<wchar_t> domain(domainLength + 1);
    if (!LookupAccountSidW(nullptr, sid, name.data(), &nameLength, domain.data(), &domainLength,
                           &use)) {
        ThrowLastError("Cannot get file owner", GetLastError());
    }
    return String::FromWide(name.data(), nameLength);
}

bool LooksLikeSidString(const std::u16string& name) {
    return name.size() > 2 && (name[0] == u'S' || name[0] == u's') && name[1] == u'-';
}

// The SID an account name stands for: a SID string ("S-1-5-32-544") as it is, a name ("jane",
// "OFFICE\jane") through the account lookup. Its first call only asks for the sizes and
// fails by design with ERROR_INSUFFICIENT_BUFFER; any other answer means no such account.
std::vector<BYTE> AccountSid(const String& name) {
    const char* message = "No such account";
    if (LooksLikeSidString(name.units())) {
        PSID converted = nullptr;
        if (ConvertStringSidToSidW(name.wide(), &converted)) {
            const UniqueLocalMemory owned(converted);
            const auto* bytes = static_cast<const BYTE*>(converted);
            return std::vector<BYTE>(bytes, bytes + GetLengthSid(converted));
        }
    }
    if (name.units().empty()) {
        ThrowLastError(message, ERROR_NONE_MAPPED);  // the system would name the computer
    }
    DWORD sidSize = 0;
    DWORD domainSize = 0;
    SID_NAME_USE use;
    if (!LookupAccountNameW(nullptr, name.wide(), nullptr, &sidSize, nullptr, &domainSize, &use)) {
        const DWORD error = GetLastError();
        if (error != ERROR_INSUFFICIENT_BUFFER) {
            ThrowLastError(message, error);
        }
    }
    if (sidSize == 0) {
        ThrowLastError(message, ERROR_NONE_MAPPED);
    }
    std::vector<BYTE> sid(sidSize);
    std::vector<wchar_t> domain(domainSize + 1);
    domainSize = static_cast<DWORD>(domain.size());
    if (!LookupAccountNameW(nullptr, name.wide(), sid.data(), &sidSize, domain.data(), &domainSize,
                            &use)) {
        ThrowLastError(message, GetLastError());
    }
    return sid;
}

void SetAccount(const String& path, const String& accountName, bool owner) {
    std::vector<BYTE> sid = AccountSid(accountName);
    std::vector<wchar_t> buffer = PathBuffer(path);
    const SECURITY_INFORMATION part =
        owner ? OWNER_SECURITY_INFORMATION : GROUP_SECURITY_INFORMATION;
    PSID newSid = sid.data();
    const DWORD result =
        SetNamedSecurityInfoW(buffer.data(), SE_FILE_OBJECT, part, owner ? newSid : nullptr,
                              owner ? nullptr : newSid, nullptr, nullptr);
    if (result != ERROR_SUCCESS) {
        ThrowLastError(owner ? "Cannot change owner of item" : "Cannot change group of item",
                       result);
    }
}

}  // namespace

std::shared_ptr<const String> FileManager::getOwnerName(const String& path) const {
    return AccountName(path, true);
}

std::shared_ptr<const String> FileManager::getGroupName(const String& path) const {
    return AccountName(path, false);
}

uint32_t FileManager::getOwnerRights(const String& path) const {
    return GetRights(path, Whose::kOwner);
}

uint32_t FileManager::getGroupRights(const String& path) const {
    return GetRights(path, Whose::kGroup);
}

uint32_t FileManager::getEveryoneRights(const String& path) const {
    return GetRights(path, Whose::kEveryone);
}

void FileManager::setOwner(const String& path, const String& accountName) const {
    SetAccount(path, accountName, true);
}

void FileManager::setGroup(const String& path, const String& accountName) const {
    SetAccount(path, accountName, false);
}

void FileManager::setOwnerRights(const String& path, uint32_t rights) const {
    AddRights(path, Whose::kOwner, rights, "Cannot set new owner rights");
}

void FileManager::setGroupRights(const String& path, uint32_t rights) const {
    AddRights(path, Whose::kGroup, rights, "Cannot set new group rights");
}

void FileManager::setEveryoneRights(const String& path, uint32_t rights) const {
    AddRights(path, Whose::kEveryone, rights, "Cannot set new everyone rights");
}

}  // namespace slib
