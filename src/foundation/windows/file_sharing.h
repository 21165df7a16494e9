#pragma once
// How we open files beside other programs: the share modes each use grants, and the short retry
// that outlasts an antivirus scanner or backup agent holding a file for a moment.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <functional>
#include <string>

#include "foundation/windows/unique_handles.h"

namespace slib {

enum class FileUse {
    kRead,        // others may read, write and delete meanwhile (a log another program writes)
    kWrite,       // others may read what we write, nothing more
    kAttributes,  // dates and attributes only: nobody is kept out
};

DWORD ShareModeFor(FileUse use);

// Whether `error` may pass by itself: a sharing or lock violation, or the access-denied a
// scanner's open causes (not for a read-only file or a folder, whose refusal is lasting).
bool IsPassingConflict(DWORD error, const std::u16string& systemPath);

// Calls `attempt` until it returns true, fails other than with a passing conflict, or about a
// second of retries is spent. Returns the last answer; GetLastError() is then the failure's.
bool RetryWhileBusy(const std::u16string& systemPath, const std::function<bool()>& attempt);

// CreateFileW on `systemPath` (the long form) with the use's share mode, retried while busy.
// Invalid on failure, with GetLastError() set.
UniqueFileHandle OpenShared(const std::u16string& systemPath, DWORD access, FileUse use,
                            DWORD disposition, DWORD flagsAndAttributes = FILE_ATTRIBUTE_NORMAL);

}  // namespace slib
