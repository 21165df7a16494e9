#pragma once
// A copy of a file the caller opened and checked, read from that very item: its bytes come from a
// second open of the same handle, never from its path again, which a swap could have redirected;
// a system that would open another item there has the copy refused.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <string>

namespace slib {

// Copies the open file `source` (any access) to `systemTarget`, a full path in long form: its data
// and named streams, its attributes and its last-write time, as the system's own file copy does.
// The copy is made beside the target under a temporary name and takes the target's name (replacing
// a file there) only when whole; a copy that fails is taken away again. False with
// GetLastError() set on failure: ERROR_CANT_ACCESS_FILE when the item could not be read as itself.
bool CopyOpenFile(HANDLE source, const std::u16string& systemTarget);

}  // namespace slib
