// Owner, group and the three rights values, through the Windows security API. Every descriptor
// and ACL the API allocates is owned by a UniqueResource, so a throw frees it too.

#include <windows.h>

#include <aclapi.h>

#include <vector>

#include "foundation/exception.h"
#include "foundation/windows/file_manager.h"
#include "foundation/windows/item_security.h"

namespace slib {

using namespace security_detail;

namespace {

uint32_t GetRights(const String& path, Whose whose) {
    const char* message = "Cannot read file security info";
    const ItemSecurity security = ReadSecurity(path, RightsParts(whose), message);
    return RightsFromAccessMask(EffectiveMask(whose, security, message));
}

void AddRights(const String& path, Whose whose, uint32_t rights, const char* message) {
    const ItemSecurity security = ReadSecurity(path, RightsParts(whose), message);
    const UniqueAcl merged = DaclAddingRights(whose, security, rights, message);
    if (!merged) {
        return;
    }
    std::vector<wchar_t> buffer = PathBuffer(path);
    const DWORD result =
        SetNamedSecurityInfoW(buffer.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                              nullptr, merged.get(), nullptr);
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

void SetAccount(const String& path, const String& accountName, bool owner) {
    DWORD sidSize = 0;
    DWORD domainSize = 0;
    SID_NAME_USE use;
    // The size query itself must succeed; a refusal there is taken as an unknown account.
    if (!LookupAccountNameW(nullptr, accountName.wide(), nullptr, &sidSize, nullptr, &domainSize,
                            &use)) {
        ThrowLastError("No such account", GetLastError());
    }
    std::vector<BYTE> sid(sidSize);
    std::vector<wchar_t> domain(domainSize + 1);
    LookupAccountNameW(nullptr, accountName.wide(), sid.data(), &sidSize, domain.data(),
                       &domainSize, &use);
    std::vector<wchar_t> buffer = PathBuffer(path);
    const SECURITY_INFORMATION part =
        owner ? OWNER_SECURITY_INFORMATION : GROUP_SECURITY_INFORMATION;
    PSID newSid = sid.empty() ? nullptr : sid.data();
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
