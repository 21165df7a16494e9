#include "foundation/windows/item_identity.h"

#include <cstring>

#include "foundation/windows/open_items.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

// FILE_ID_INFO and its information class arrive with Windows 8, past the API level we build for;
// on Windows 7 the call fails and the 64-bit form below answers.
struct FileIdInformation {
    ULONGLONG VolumeSerialNumber;
    FILE_ID_128 FileId;
};
constexpr auto kFileIdInfo = static_cast<FILE_INFO_BY_HANDLE_CLASS>(18);

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

UniqueFileHandle OpenItem(const std::u16string& systemPath, DWORD access, DWORD flags) {
    return UniqueFileHandle(CreateFileW(Wide(systemPath), access, kShareAll, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
}

bool StandardInfo(HANDLE item, FILE_STANDARD_INFO& info) {
    return GetFileInformationByHandleEx(item, FileStandardInfo, &info, sizeof info) != 0;
}

}  // namespace

bool ItemIdentity::operator==(const ItemIdentity& other) const {
    return volumeSerial == other.volumeSerial &&
           std::memcmp(fileId, other.fileId, sizeof fileId) == 0;
}

std::optional<ItemIdentity> IdentityOf(HANDLE item) {
    // FILE_ID_INFO carries ReFS's 128-bit ids and the 64-bit volume serial; older systems and
    // some file systems answer only the 64-bit form.
    FileIdInformation idInfo = {};
    if (GetFileInformationByHandleEx(item, kFileIdInfo, &idInfo, sizeof idInfo)) {
        ItemIdentity identity;
        identity.volumeSerial = idInfo.VolumeSerialNumber;
        static_assert(sizeof identity.fileId == sizeof idInfo.FileId.Identifier, "FILE_ID_128");
        std::memcpy(identity.fileId, idInfo.FileId.Identifier, sizeof identity.fileId);
        return identity;
    }
    BY_HANDLE_FILE_INFORMATION info = {};
    if (!GetFileInformationByHandle(item, &info)) {
        return std::nullopt;
    }
    ItemIdentity identity;
    identity.volumeSerial = info.dwVolumeSerialNumber;
    const uint64_t index = (uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow;
    std::memcpy(identity.fileId, &index, sizeof index);
    return identity;
}

UniqueFileHandle OpenItemItself(const std::u16string& systemPath, DWORD access) {
    return OpenItem(systemPath, access, FILE_FLAG_OPEN_REPARSE_POINT);
}

UniqueFileHandle OpenItemFollowed(const std::u16string& systemPath, DWORD access) {
    return OpenItem(systemPath, access, 0);
}

std::optional<ItemIdentity> IdentityOfPath(const std::u16string& systemPath) {
    const UniqueFileHandle item = OpenItemItself(systemPath);
    if (!item.valid()) {
        return std::nullopt;
    }
    return IdentityOf(item.get());
}

std::vector<ItemIdentity> IdentitiesOfPath(const std::u16string& systemPath) {
    std::vector<ItemIdentity> identities;
    for (const UniqueFileHandle& item :
         {OpenItemItself(systemPath), OpenItemFollowed(systemPath)}) {
        if (!item.valid()) {
            continue;
        }
        if (const std::optional<ItemIdentity> identity = IdentityOf(item.get())) {
            identities.push_back(*identity);
        }
    }
    return identities;
}

bool MatchesListedId(const ItemIdentity& identity, int64_t listedId) {
    if (listedId == 0) {
        return true;
    }
    uint8_t listed[16] = {};
    std::memcpy(listed, &listedId, sizeof listedId);
    return std::memcmp(listed, identity.fileId, sizeof listed) == 0;
}

bool IsDeletePending(HANDLE item) {
    FILE_STANDARD_INFO info = {};
    return StandardInfo(item, info) && info.DeletePending;
}

bool IsGoneOrDeletePending(const std::u16string& systemPath) {
    // The NT form of the "\\?\" path: only the native call tells a pending delete from a refusal
    // (CreateFileW turns both into ERROR_ACCESS_DENIED).
    std::u16string ntPath = systemPath;
    if (ntPath.rfind(u"\\\\?\\", 0) != 0) {
        return GetFileAttributesW(Wide(systemPath)) == INVALID_FILE_ATTRIBUTES &&
               (GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND);
    }
    ntPath[1] = u'?';
    UniqueFileHandle item;
    const long result =
        OpenNative(nullptr, ntPath, FILE_READ_ATTRIBUTES, ChildOpen::kExisting, item);
    constexpr long kNameNotFound = static_cast<long>(0xC0000034);
    constexpr long kPathNotFound = static_cast<long>(0xC000003A);
    constexpr long kDeletePending = static_cast<long>(0xC0000056);
    if (result < 0) {
        return result == kNameNotFound || result == kPathNotFound || result == kDeletePending;
    }
    return IsDeletePending(item.get());
}

bool HasSingleName(HANDLE item) {
    FILE_STANDARD_INFO info = {};
    return StandardInfo(item, info) && (info.Directory || info.NumberOfLinks <= 1);
}

std::u16string FinalPathOf(HANDLE item) {
    std::u16string path(MAX_PATH, u'\0');
    for (int attempt = 0; attempt < 2; ++attempt) {
        const DWORD length = GetFinalPathNameByHandleW(item, reinterpret_cast<wchar_t*>(&path[0]),
                                                       static_cast<DWORD>(path.size()),
                                                       FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
        if (length == 0) {
            return u"";
        }
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.assign(length + 1, u'\0');
    }
    return u"";
}

}  // namespace slib
