#include "foundation/windows/provisional_file.h"

#include <algorithm>
#include <vector>

#include "foundation/temporary_names.h"
#include "foundation/windows/open_items.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

// Large enough that the per-call cost vanishes, small enough for any system's I/O limits.
constexpr DWORD kChunk = 4u << 20;

// What CreateHardLinkW answers where the volume keeps no second names.
bool NoHardLinksHere(DWORD error) {
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ||
           error == ERROR_INVALID_PARAMETER;
}

bool IsTaken(DWORD error) {
    return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS;
}

bool MarkForDeletion(HANDLE file, bool remove) {
    FILE_DISPOSITION_INFO disposition = {};
    disposition.DeleteFile = remove ? TRUE : FALSE;
    return SetFileInformationByHandle(file, FileDispositionInfo, &disposition,
                                      sizeof disposition) != 0;
}

}  // namespace

ProvisionalFile::ProvisionalFile(const std::u16string& systemPath, DWORD share, DWORD flags)
    : path_(systemPath),
      handle_(CreateFileW(Wide(path_), GENERIC_READ | GENERIC_WRITE | DELETE, share, nullptr,
                          CREATE_NEW, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE | flags,
                          nullptr)) {
    if (!handle_.valid()) {
        fail(GetLastError());
    }
}

bool ProvisionalFile::fail(DWORD error) {
    error_ = error == 0 ? ERROR_WRITE_FAULT : error;
    return false;
}

bool ProvisionalFile::write(const uint8_t* bytes, uint64_t size) {
    while (size > 0) {
        const DWORD chunk = static_cast<DWORD>(std::min<uint64_t>(size, kChunk));
        DWORD written = 0;
        if (!WriteFile(handle_.get(), bytes, chunk, &written, nullptr)) {
            return fail(GetLastError());
        }
        if (written != chunk) {
            return fail(ERROR_DISK_FULL);
        }
        bytes += written;
        size -= written;
    }
    return true;
}

bool ProvisionalFile::keepAs(const std::u16string& systemPath) {
    if (CreateHardLinkW(Wide(systemPath), Wide(path_), nullptr)) {
        close();
        return true;
    }
    const DWORD error = GetLastError();
    if (!NoHardLinksHere(error)) {
        return fail(error);
    }
    return copyAs(systemPath);
}

bool ProvisionalFile::copyAs(const std::u16string& systemPath) {
    const std::u16string beside = TemporaryNameBeside(systemPath);
    UniqueFileHandle copy(CreateFileW(Wide(beside), GENERIC_WRITE | DELETE, FILE_SHARE_READ,
                                      nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!copy) {
        return fail(GetLastError());
    }
    if (!MarkForDeletion(copy.get(), true)) {
        const DWORD error = GetLastError();
        copy.reset();
        DeleteFileW(Wide(beside));
        return fail(error);
    }
    LARGE_INTEGER start = {};
    std::vector<uint8_t> buffer(kChunk);
    DWORD got = 0;
    if (!SetFilePointerEx(handle_.get(), start, nullptr, FILE_BEGIN)) {
        return fail(GetLastError());
    }
    while (ReadFile(handle_.get(), buffer.data(), kChunk, &got, nullptr) && got > 0) {
        DWORD written = 0;
        if (!WriteFile(copy.get(), buffer.data(), got, &written, nullptr) || written != got) {
            return fail(written != got ? ERROR_DISK_FULL : GetLastError());
        }
    }
    FILETIME modified = {};
    if (GetFileTime(handle_.get(), nullptr, nullptr, &modified)) {
        SetFileTime(copy.get(), nullptr, nullptr, &modified);
    }
    // Renamed while still marked where the system allows that; elsewhere kept first.
    if (RenameOpenItem(copy.get(), systemPath, false)) {
        if (!MarkForDeletion(copy.get(), false)) {
            return fail(GetLastError());  // it goes with the handle: absent, not cut short
        }
    } else {
        const DWORD error = GetLastError();
        if (IsTaken(error) || !MarkForDeletion(copy.get(), false)) {
            return fail(error);
        }
        if (!RenameOpenItem(copy.get(), systemPath, false)) {
            const DWORD renameError = GetLastError();
            MarkForDeletion(copy.get(), true);
            return fail(renameError);
        }
    }
    copy.reset();
    close();
    return true;
}

}  // namespace slib
