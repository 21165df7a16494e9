#include "foundation/windows/open_file_copy.h"

#include <vector>

#include "foundation/windows/file_sharing.h"
#include "foundation/windows/open_items.h"
#include "foundation/windows/replacement_file.h"
#include "foundation/windows/unique_handles.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

constexpr DWORD kChunk = 1 << 20;

// The attributes a copy carries over; the rest (compression, sparseness, ...) the system decides.
constexpr DWORD kCopiedAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                    FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                    FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

bool CopyBytes(HANDLE from, HANDLE to) {
    std::vector<char> buffer(kChunk);
    for (;;) {
        DWORD got = 0;
        if (!ReadFile(from, buffer.data(), kChunk, &got, nullptr)) {
            return false;
        }
        if (got == 0) {
            return true;
        }
        DWORD written = 0;
        if (!WriteFile(to, buffer.data(), got, &written, nullptr)) {
            return false;
        }
        if (written != got) {
            SetLastError(ERROR_DISK_FULL);
            return false;
        }
    }
}

// The names of the open file's named streams (":name:$DATA"); none where the file system keeps
// no streams or cannot list them (FAT, some network shares).
bool NamedStreams(HANDLE file, std::vector<std::u16string>& names) {
    std::vector<LONGLONG> buffer(8192);
    while (!GetFileInformationByHandleEx(file, FileStreamInfo, buffer.data(),
                                         static_cast<DWORD>(buffer.size() * sizeof(LONGLONG)))) {
        const DWORD error = GetLastError();
        if (error == ERROR_MORE_DATA && buffer.size() < (1u << 24)) {
            buffer.resize(buffer.size() * 2);
            continue;
        }
        if (error == ERROR_HANDLE_EOF || error == ERROR_INVALID_FUNCTION ||
            error == ERROR_INVALID_PARAMETER || error == ERROR_NOT_SUPPORTED) {
            return true;
        }
        SetLastError(error);
        return false;
    }
    const BYTE* record = reinterpret_cast<const BYTE*>(buffer.data());
    for (;;) {
        const auto* info = reinterpret_cast<const FILE_STREAM_INFO*>(record);
        std::u16string name(reinterpret_cast<const char16_t*>(info->StreamName),
                            info->StreamNameLength / sizeof(WCHAR));
        if (name != u"::$DATA") {
            names.push_back(std::move(name));
        }
        if (info->NextEntryOffset == 0) {
            return true;
        }
        record += info->NextEntryOffset;
    }
}

// Each named stream, opened inside the open file itself, to the same stream of the target.
bool CopyNamedStreams(HANDLE from, const std::u16string& systemTarget) {
    std::vector<std::u16string> names;
    if (!NamedStreams(from, names)) {
        return false;
    }
    for (const std::u16string& name : names) {
        const UniqueFileHandle stream = OpenChild(from, name, FILE_READ_DATA);
        if (!stream.valid()) {
            return false;
        }
        const UniqueFileHandle copy(CreateFileW(Wide(systemTarget + name), GENERIC_WRITE,
                                                ShareModeFor(FileUse::kWrite), nullptr,
                                                CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!copy.valid() || !CopyBytes(stream.get(), copy.get())) {
            return false;
        }
    }
    return true;
}

// Last, so that no write of ours dates the copy or meets its read-only mark; 0 keeps a time.
bool TakeOver(HANDLE to, const FILE_BASIC_INFO& source) {
    FILE_BASIC_INFO basic = {};
    basic.LastWriteTime = source.LastWriteTime;
    basic.FileAttributes = source.FileAttributes & kCopiedAttributes;
    if (basic.FileAttributes == 0) {
        basic.FileAttributes = FILE_ATTRIBUTE_NORMAL;
    }
    return SetFileInformationByHandle(to, FileBasicInfo, &basic, sizeof basic) != 0;
}

}  // namespace

bool CopyOpenFile(HANDLE source, const std::u16string& systemTarget) {
    const UniqueFileHandle reader =
        ReopenItem(source, FILE_READ_DATA | FILE_READ_ATTRIBUTES, FILE_FLAG_SEQUENTIAL_SCAN);
    FILE_BASIC_INFO basic = {};
    if (!reader.valid() ||
        !GetFileInformationByHandleEx(reader.get(), FileBasicInfo, &basic, sizeof basic)) {
        return false;
    }
    // Written under a name of ours and renamed through its handle once whole, so a kill leaves at
    // most a recognisable "~vf-*.partial", never a cut file under the real name. Not deleted on
    // close: the named streams are opened by the file's name, which a delete mark would refuse.
    const std::u16string temporary = TemporaryNameBeside(systemTarget);
    const UniqueFileHandle writer(CreateFileW(
        Wide(temporary), GENERIC_WRITE | kRemovalAccess, ShareModeFor(FileUse::kWrite), nullptr,
        CREATE_NEW, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!writer.valid()) {
        return false;
    }
    if (CopyBytes(reader.get(), writer.get()) && CopyNamedStreams(reader.get(), temporary) &&
        TakeOver(writer.get(), basic) && RenameOpenItem(writer.get(), systemTarget, true)) {
        return true;
    }
    const DWORD error = GetLastError();
    DeleteOpenItem(writer.get());  // read-only by now, perhaps: this one deletes that too
    SetLastError(error);
    return false;
}

}  // namespace slib
