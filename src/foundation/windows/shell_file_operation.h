#pragma once
// One run of the shell's file operation (SHFileOperationW) and the code its answer stands for.
// The shell reports through its return value and fAnyOperationsAborted only: its documentation
// says not to take its failures from GetLastError(), which it leaves as its inner calls did.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <shellapi.h>

#include <cstdint>

#include "foundation/utf16_string.h"

namespace slib {

struct ShellOutcome {
    int result;    // SHFileOperationW's return value
    bool aborted;  // fAnyOperationsAborted
    bool failed() const { return result != 0 || aborted; }
};

// SHFileOperationW, or a stand-in with its contract.
using ShellFileOperation = int(WINAPI*)(LPSHFILEOPSTRUCTW);

// Runs `operation` (FO_COPY, FO_MOVE, FO_DELETE) on `source`, to `destination` when given, with
// no dialog that would wait for an answer. Each path ends at its first zero, as the checks saw it.
ShellOutcome RunShellOperation(UINT operation, const String& source, const String* destination,
                               ShellFileOperation operate = &SHFileOperationW);

// 0 for an outcome that did not fail; the code of the shell's nonzero return value; -36 for one
// that returned 0 but reported parts aborted.
int32_t ShellOutcomeCode(const ShellOutcome& outcome);

}  // namespace slib
