// Copy, move and delete, handed to the shell's file operation so folders go with their whole
// contents and cross-volume moves are the shell's business. Our part: the checks, in order, before
// anything on disk changes, and keeping from the shell any transfer with a path it cannot hold:
// those run on the long-path walk, with the same checks and the same results.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <shellapi.h>

#include <cwchar>
#include <vector>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/shell_operation_code.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/long_path_walk.h"
#include "foundation/windows/shell_dialog_flags.h"

namespace slib {

using file_manager_detail::Wide;

namespace {

// The shell's list form of one path: the path, then two terminating zeros. No long-path prefix,
// which the shell does not accept. The path ends at its first zero, as the checks saw it: an
// embedded zero must not smuggle a second, unchecked item into the list.
std::vector<wchar_t> ShellList(const String& path) {
    const wchar_t* text = path.wide();
    std::vector<wchar_t> list(text, text + wcslen(text));
    list.push_back(L'\0');
    list.push_back(L'\0');
    return list;
}

// Outcome of one shell file operation: its return value, whether it reported anything aborted,
// and the thread's last error taken right after the call (before the lists are freed).
struct ShellOutcome {
    int result;
    BOOL aborted;
    DWORD lastError;
    bool failed() const { return result != 0 || aborted; }
};

ShellOutcome RunShellOperation(UINT operation, const String& source, const String* destination) {
    std::vector<wchar_t> from = ShellList(source);
    std::vector<wchar_t> to;
    if (destination != nullptr) {
        to = ShellList(*destination);
    }
    SHFILEOPSTRUCTW request = {};
    request.hwnd = nullptr;
    request.wFunc = operation;
    request.pFrom = from.data();
    request.pTo = destination != nullptr ? to.data() : nullptr;
    request.fFlags = FileOperationFlags();
    request.fAnyOperationsAborted = FALSE;
    request.hNameMappings = nullptr;
    request.lpszProgressTitle = nullptr;
    // Cleared first: a value left from an earlier call must not explain this call's failure.
    SetLastError(ERROR_SUCCESS);
    const int result = SHFileOperationW(&request);
    return ShellOutcome{result, request.fAnyOperationsAborted, GetLastError()};
}

// The thread's last error when the shell left one; else the shell's own return value, which
// is no system error; else -36. A failed operation is never reported as success.
[[noreturn]] void ThrowShellFailure(const char* message, const ShellOutcome& outcome) {
    if (outcome.lastError != ERROR_SUCCESS) {
        ThrowLastError(message, outcome.lastError);
    }
    Throw(outcome.result != 0 ? ShellOperationCode(outcome.result) : kIoError, message);
}

// A shell that reports success for what it did not do (Wine's does, for a move it could not
// make) must not have it reported as done: the item is checked where the operation put it.
void RequireShellDid(bool done, const char* message) {
    if (!done) {
        Throw(kIoError, message);
    }
}

// Removes an item our own failed operation made; a failure to do so changes nothing reported.
void RemoveQuietly(const std::u16string& path) {
    try {
        long_path::DeleteTree(path, "Cannot copy item");
    } catch (const Exception&) {
    }
}

// The source's last component: the text after its last "\", or all of it when it has none.
std::u16string LastComponent(const std::u16string& path) {
    const size_t separator = path.rfind(u'\\');
    return separator == std::u16string::npos ? path : path.substr(separator + 1);
}

// The path as the checks and the shell see it: up to its first zero.
std::u16string Plain(const String& path) {
    return reinterpret_cast<const char16_t*>(path.wide());
}

// getItemKind, but able to see a path the plain form cannot reach (the system refuses one of
// MAX_PATH or more unprefixed): the checks must not call a long path missing or unreadable.
uint32_t TransferKind(const FileManager& manager, const String& path) {
    if (Plain(path).size() < long_path::kShellLimit) {
        return manager.getItemKind(path);
    }
    return long_path::KindOf(Plain(path));
}

}  // namespace

void FileManager::copyItem(const String& source, const String& destination) const {
    if (TransferKind(*this, source) == ItemKind::kNone) {
        Throw(kItemNotFound, "Source item does not exist");
    }
    if (TransferKind(*this, destination) == ItemKind::kFile) {
        Throw(kItemExists, "Destination item already exists");
    }
    const std::u16string target = long_path::TransferTarget(Plain(source), Plain(destination));
    if (long_path::NeedsWalk(Plain(source), target)) {
        long_path::CopyTree(Plain(source), target, "Cannot copy item");
        return;
    }
    const bool targetWasThere = TransferKind(*this, String(target)) != ItemKind::kNone;
    const ShellOutcome outcome = RunShellOperation(FO_COPY, source, &destination);
    if (outcome.failed()) {
        // What the failed copy made of a new item (a file cut short by a full disk) goes again.
        if (!targetWasThere && TransferKind(*this, String(target)) != ItemKind::kNone) {
            RemoveQuietly(target);
        }
        ThrowShellFailure("Cannot copy item", outcome);
    }
    RequireShellDid(TransferKind(*this, String(target)) != ItemKind::kNone, "Cannot copy item");
}

void FileManager::moveItem(const String& source, const String& destination) const {
    if (TransferKind(*this, source) == ItemKind::kNone) {
        Throw(kItemNotFound, "Source item does not exist");
    }
    if (TransferKind(*this, destination) == ItemKind::kFile) {
        Throw(kItemExists, "Destination item already exists");
    }
    // Into an existing folder the shell would overwrite a same-named file without asking; refuse
    // that here. A same-named folder is merged, as the shell does.
    const String candidate(destination.units() + u"\\" + LastComponent(source.units()));
    if (TransferKind(*this, candidate) == ItemKind::kFile) {
        Throw(kItemExists, "Destination item already exists");
    }
    const std::u16string target = long_path::TransferTarget(Plain(source), Plain(destination));
    if (long_path::NeedsWalk(Plain(source), target)) {
        long_path::MoveTree(Plain(source), target, "Cannot move item");
        return;
    }
    const ShellOutcome outcome = RunShellOperation(FO_MOVE, source, &destination);
    if (outcome.failed()) {
        ThrowShellFailure("Cannot move item", outcome);
    }
    // A rename that changes only case leaves the source's name answering.
    const bool sameName =
        CompareStringOrdinal(Wide(Plain(source)), -1, Wide(target), -1, TRUE) == CSTR_EQUAL;
    RequireShellDid(sameName || TransferKind(*this, source) == ItemKind::kNone, "Cannot move item");
}

void FileManager::deleteItem(const String& path) const {
    if (TransferKind(*this, path) == ItemKind::kNone) {
        Throw(kItemNotFound, "Item does not exist");
    }
    if (long_path::NeedsWalk(Plain(path), u"")) {
        long_path::DeleteTree(Plain(path), "Cannot delete item");
        return;
    }
    const ShellOutcome outcome = RunShellOperation(FO_DELETE, path, nullptr);
    if (outcome.failed()) {
        ThrowShellFailure("Cannot delete item", outcome);
    }
    RequireShellDid(TransferKind(*this, path) == ItemKind::kNone, "Cannot delete item");
}

}  // namespace slib
