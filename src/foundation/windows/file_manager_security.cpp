// Owner, group and the three rights values, through the Windows security API. Every descriptor
// and ACL the API allocates is owned by a UniqueResource, so a throw frees it too.

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <vector>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/path_normal_form.h"
#include "foundation/windows/file_sharing.h"
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
// derives from the DACL (Wine the Unix mode). The new entry applies to the item alone, so it is
// written to the item alone, through its handle: SetNamedSecurityInfoW would re-apply
// inheritance to everything below a folder, at a cost that grows with the tree, while the call
// lock holds every other call.
void AddRights(const String& path, Whose whose, uint32_t rights, const char* message) {
    const std::u16string systemPath = WithLongPathPrefix(path.units());
    const auto open = [&](DWORD access) {
        return OpenShared(systemPath, access, FileUse::kAttributes, OPEN_EXISTING,
                          FILE_FLAG_BACKUP_SEMANTICS);
    };
    // Someone who may read the DACL but not write it still succeeds when nothing is missing.
    UniqueFileHandle item = open(READ_CONTROL | WRITE_DAC);
    const bool writable = item.valid();
    if (!writable && GetLastError() == ERROR_ACCESS_DENIED) {
        item = open(READ_CONTROL);
    }
    if (!item.valid()) {
        ThrowLastError(message, GetLastError());
    }
    const ItemSecurity security = ReadSecurity(item.get(), RightsParts(whose), message);
    std::vector<BYTE> dacl = DaclAddingRights(whose, security, rights, message);
    if (dacl.empty()) {
        return;
    }
    if (!writable) {
        ThrowLastError(message, ERROR_ACCESS_DENIED);
    }
    // The DACL keeps its inheritance flags (protected or not, inherited entries marked so) as
    // they were.
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    GetSecurityDescriptorControl(security.descriptor.get(), &control, &revision);
    const SECURITY_DESCRIPTOR_CONTROL kept = SE_DACL_PROTECTED | SE_DACL_AUTO_INHERITED;
    SECURITY_DESCRIPTOR descriptor;
    if (!InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) ||
        !SetSecurityDescriptorDacl(&descriptor, TRUE, reinterpret_cast<PACL>(dacl.data()), FALSE) ||
        !SetSecurityDescriptorControl(&descriptor, kept, control & kept) ||
        !SetKernelObjectSecurity(item.get(), DACL_SECURITY_INFORMATION, &descriptor)) {
        ThrowLastError(message, GetLastError());
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
