#pragma once
// A finished file put in the place of an existing one with ReplaceFileW, which keeps the
// original's security, streams, short name and creation date. On the way the original is moved to
// a backup name of our own, recognisable as such; should the swap fail after that, the original
// is moved back, and if even that keeps failing it stays under the backup name and the caller
// says where.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <cstdint>
#include <string>

namespace slib {

using ReplaceFileFunction = BOOL(WINAPI*)(LPCWSTR, LPCWSTR, LPCWSTR, DWORD, LPVOID, LPVOID);

struct SwapOutcome {
    bool swapped = false;
    DWORD error = 0;                // why not
    bool originalStranded = false;  // it could not be moved back: it is at `backup`
    std::u16string backup;
};

// Swaps `replacement` in for `target` (long forms, one folder), the original passing through
// `backup` (which must not exist) and removed once the swap is done. `replace` is the system's
// ReplaceFileW but for tests.
SwapOutcome SwapIntoPlace(const std::u16string& target, const std::u16string& replacement,
                          const std::u16string& backup,
                          ReplaceFileFunction replace = &ReplaceFileW);

// "~vf-<process>-<number>.original": the backup name beside `target` (long form) for its swap,
// short and fixed in shape, so it fits whatever the target's own name.
std::u16string BackupNameBeside(const std::u16string& target);

}  // namespace slib
