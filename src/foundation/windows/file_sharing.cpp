#include "foundation/windows/file_sharing.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

// Waits between attempts, growing: about one second in all.
constexpr DWORD kRetryDelays[] = {20, 40, 80, 160, 300, 400};

}  // namespace

DWORD ShareModeFor(FileUse use) {
    switch (use) {
        case FileUse::kWrite:
            return FILE_SHARE_READ;
        case FileUse::kRead:
        case FileUse::kAttributes:
            break;
    }
    return FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
}

bool IsPassingConflict(DWORD error, const std::u16string& systemPath) {
    if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION) {
        return true;
    }
    if (error != ERROR_ACCESS_DENIED) {
        return false;
    }
    const DWORD attributes = GetFileAttributesW(Wide(systemPath));
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) == 0;
}

bool RetryWhileBusy(const std::u16string& systemPath, const std::function<bool()>& attempt) {
    for (const DWORD delay : kRetryDelays) {
        if (attempt()) {
            return true;
        }
        const DWORD error = GetLastError();
        if (!IsPassingConflict(error, systemPath)) {
            SetLastError(error);
            return false;
        }
        Sleep(delay);
    }
    return attempt();
}

UniqueFileHandle OpenShared(const std::u16string& systemPath, DWORD access, FileUse use,
                            DWORD disposition, DWORD flagsAndAttributes) {
    UniqueFileHandle file;
    RetryWhileBusy(systemPath, [&] {
        file.reset(CreateFileW(Wide(systemPath), access, ShareModeFor(use), nullptr, disposition,
                               flagsAndAttributes, nullptr));
        return file.valid();
    });
    return file;
}

}  // namespace slib
