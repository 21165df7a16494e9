#include "foundation/windows/shell_file_operation.h"

#include <cwchar>
#include <vector>

#include "foundation/error_codes.h"
#include "foundation/shell_operation_code.h"
#include "foundation/windows/shell_dialog_flags.h"

namespace slib {

namespace {

// The shell's list form of one path: the path, then two terminating zeros. No long-path prefix,
// which the shell does not accept. An embedded zero must not smuggle a second, unchecked item
// into the list.
std::vector<wchar_t> ShellList(const String& path) {
    const wchar_t* text = path.wide();
    std::vector<wchar_t> list(text, text + wcslen(text));
    list.push_back(L'\0');
    list.push_back(L'\0');
    return list;
}

}  // namespace

ShellOutcome RunShellOperation(UINT operation, const String& source, const String* destination,
                               ShellFileOperation operate) {
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
    const int result = operate(&request);
    return ShellOutcome{result, request.fAnyOperationsAborted != FALSE};
}

int32_t ShellOutcomeCode(const ShellOutcome& outcome) {
    if (outcome.result != 0) {
        return ShellOperationCode(outcome.result);
    }
    return outcome.aborted ? kIoError : kNoError;
}

}  // namespace slib
