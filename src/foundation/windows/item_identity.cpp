#include "foundation/windows/item_identity.h"

#include <cstring>

#include "foundation/windows/wide_text.h"

namespace slib {

bool ItemIdentity::operator==(const ItemIdentity& other) const {
    return volumeSerial == other.volumeSerial &&
           std::memcmp(fileId, other.fileId, sizeof fileId) == 0;
}

namespace {

// FILE_ID_INFO and its class (Windows 8 on) are declared only for newer targets than ours; an
// older system refuses the class and the 64-bit form below answers instead.
struct FileIdInfo128 {
    ULONGLONG VolumeSerialNumber;
    FILE_ID_128 FileId;
};
constexpr auto kFileIdInfoClass = static_cast<FILE_INFO_BY_HANDLE_CLASS>(18);

}  // namespace

std::optional<ItemIdentity> IdentityOf(HANDLE item) {
    // FILE_ID_INFO carries ReFS's 128-bit ids and the 64-bit volume serial; older systems and
    // some file systems answer only the 64-bit form.
    FileIdInfo128 idInfo = {};
    if (GetFileInformationByHandleEx(item, kFileIdInfoClass, &idInfo, sizeof idInfo)) {
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
    return UniqueFileHandle(CreateFileW(
        Wide(systemPath), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

std::optional<ItemIdentity> IdentityOfPath(const std::u16string& systemPath) {
    const UniqueFileHandle item = OpenItemItself(systemPath);
    if (!item.valid()) {
        return std::nullopt;
    }
    return IdentityOf(item.get());
}

}  // namespace slib
