#include "foundation/windows/open_items.h"

#include <winternl.h>

#include <cstring>
#include <optional>

#include "foundation/windows/item_identity.h"

namespace slib {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// NtCreateFile's values that winternl.h leaves out.
constexpr ULONG kFileOpen = 1;
constexpr ULONG kFileOpenIf = 3;
constexpr ULONG kDirectoryFile = 0x00000001;

// FILE_DISPOSITION_INFO_EX arrives with Windows 10; older systems refuse the class and the plain
// form answers.
constexpr auto kFileDispositionInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
constexpr DWORD kDispositionDelete = 0x1;
constexpr DWORD kDispositionPosixSemantics = 0x2;
constexpr DWORD kDispositionIgnoreReadOnly = 0x10;

// Gives the item open through `writer` these attributes, its times untouched (0 keeps a time).
bool SetAttributesOfOpen(HANDLE writer, DWORD attributes) {
    FILE_BASIC_INFO basic = {};
    basic.FileAttributes = attributes == 0 ? FILE_ATTRIBUTE_NORMAL : attributes;
    return SetFileInformationByHandle(writer, FileBasicInfo, &basic, sizeof basic) != 0;
}

}  // namespace

bool ListOpenFolder(HANDLE folder, std::vector<ListedEntry>& entries) {
    // 64 KiB holds hundreds of entries per call; aligned for the records' 64-bit fields.
    std::vector<LONGLONG> buffer(8192);
    FILE_INFO_BY_HANDLE_CLASS kind = FileIdBothDirectoryRestartInfo;
    for (;;) {
        if (!GetFileInformationByHandleEx(folder, kind, buffer.data(),
                                          static_cast<DWORD>(buffer.size() * sizeof(LONGLONG)))) {
            return GetLastError() == ERROR_NO_MORE_FILES;
        }
        kind = FileIdBothDirectoryInfo;
        const BYTE* record = reinterpret_cast<const BYTE*>(buffer.data());
        for (;;) {
            const auto* info = reinterpret_cast<const FILE_ID_BOTH_DIR_INFO*>(record);
            std::u16string name(reinterpret_cast<const char16_t*>(info->FileName),
                                info->FileNameLength / sizeof(WCHAR));
            if (name != u"." && name != u"..") {
                // For a reparse point the listing's extended-attribute size is its tag.
                const DWORD tag =
                    (info->FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? info->EaSize : 0;
                entries.push_back(
                    ListedEntry{std::move(name), info->FileAttributes, tag, info->FileId.QuadPart});
            }
            if (info->NextEntryOffset == 0) {
                break;
            }
            record += info->NextEntryOffset;
        }
    }
}

long OpenNative(HANDLE folder, const std::u16string& name, DWORD access, ChildOpen how,
                UniqueFileHandle& item) {
    UNICODE_STRING objectName;
    objectName.Buffer = const_cast<PWSTR>(reinterpret_cast<const wchar_t*>(name.c_str()));
    objectName.Length = static_cast<USHORT>(name.size() * sizeof(WCHAR));
    objectName.MaximumLength = objectName.Length;
    OBJECT_ATTRIBUTES attributes;
    InitializeObjectAttributes(&attributes, &objectName, OBJ_CASE_INSENSITIVE, folder, nullptr);
    IO_STATUS_BLOCK status = {};
    HANDLE opened = nullptr;
    const bool create = how == ChildOpen::kFolderOrCreate;
    const NTSTATUS result =
        NtCreateFile(&opened, access | SYNCHRONIZE, &attributes, &status, nullptr,
                     FILE_ATTRIBUTE_NORMAL, kShareAll, create ? kFileOpenIf : kFileOpen,
                     FILE_OPEN_REPARSE_POINT | FILE_OPEN_FOR_BACKUP_INTENT |
                         FILE_SYNCHRONOUS_IO_NONALERT | (create ? kDirectoryFile : 0),
                     nullptr, 0);
    item.reset(result < 0 ? INVALID_HANDLE_VALUE : opened);
    return result;
}

UniqueFileHandle OpenChild(HANDLE folder, const std::u16string& name, DWORD access, ChildOpen how) {
    UniqueFileHandle child;
    const long result = OpenNative(folder, name, access, how, child);
    if (result < 0) {
        SetLastError(RtlNtStatusToDosError(result));
    }
    return child;
}

UniqueFileHandle ReopenItem(HANDLE item, DWORD access, DWORD flags) {
    UniqueFileHandle again(ReOpenFile(item, access, kShareAll, flags));
    if (!again.valid()) {
        return again;
    }
    const std::optional<ItemIdentity> held = IdentityOf(item);
    const std::optional<ItemIdentity> opened = IdentityOf(again.get());
    if (!held || !opened || *held != *opened) {
        SetLastError(ERROR_CANT_ACCESS_FILE);
        return UniqueFileHandle();
    }
    return again;
}

bool AttributesOfOpen(HANDLE item, DWORD& attributes, DWORD& reparseTag) {
    FILE_ATTRIBUTE_TAG_INFO info = {};
    if (!GetFileInformationByHandleEx(item, FileAttributeTagInfo, &info, sizeof info)) {
        return false;
    }
    attributes = info.FileAttributes;
    reparseTag = (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? info.ReparseTag : 0;
    return true;
}

bool RenameOpenItem(HANDLE item, const std::u16string& systemTarget, bool replaceExisting) {
    const size_t nameBytes = systemTarget.size() * sizeof(WCHAR);
    std::vector<LONGLONG> buffer((sizeof(FILE_RENAME_INFO) + nameBytes) / sizeof(LONGLONG) + 1);
    auto* rename = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    rename->ReplaceIfExists = replaceExisting ? TRUE : FALSE;
    rename->RootDirectory = nullptr;
    rename->FileNameLength = static_cast<DWORD>(nameBytes);
    std::memcpy(rename->FileName, systemTarget.c_str(), nameBytes);
    return SetFileInformationByHandle(item, FileRenameInfo, rename,
                                      static_cast<DWORD>(buffer.size() * sizeof(LONGLONG))) != 0;
}

bool DeleteOpenItem(HANDLE item) {
    // POSIX semantics take the name away at once, so the folder holding it can go even while
    // another program still has the file open.
    DWORD flags = kDispositionDelete | kDispositionPosixSemantics | kDispositionIgnoreReadOnly;
    if (SetFileInformationByHandle(item, kFileDispositionInfoEx, &flags, sizeof flags)) {
        return true;
    }
    FILE_DISPOSITION_INFO disposition = {TRUE};
    if (SetFileInformationByHandle(item, FileDispositionInfo, &disposition, sizeof disposition)) {
        return true;
    }
    const DWORD error = GetLastError();
    FILE_BASIC_INFO basic = {};
    if (error != ERROR_ACCESS_DENIED ||
        !GetFileInformationByHandleEx(item, FileBasicInfo, &basic, sizeof basic) ||
        (basic.FileAttributes & FILE_ATTRIBUTE_READONLY) == 0) {
        SetLastError(error);
        return false;
    }
    // Clearing the mark takes FILE_WRITE_ATTRIBUTES, asked of this very item (never again by its
    // path) only now that it is needed. A system that refuses that second open may still take
    // the change through the first handle; one that checks the handle's access refuses it there.
    const UniqueFileHandle writer = ReopenItem(
        item, FILE_WRITE_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT);
    const HANDLE attributeWriter = writer.valid() ? writer.get() : item;
    const DWORD attributes = basic.FileAttributes;
    if (!SetAttributesOfOpen(attributeWriter, attributes & ~FILE_ATTRIBUTE_READONLY)) {
        SetLastError(error);
        return false;
    }
    if (SetFileInformationByHandle(item, FileDispositionInfo, &disposition, sizeof disposition)) {
        return true;
    }
    const DWORD failure = GetLastError();
    SetAttributesOfOpen(attributeWriter, attributes);
    SetLastError(failure);
    return false;
}

}  // namespace slib
