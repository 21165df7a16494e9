#pragma once
// The flags that keep the shell's own message boxes away when no one could answer them: on a
// service's invisible desktop (a database server) such a box would wait forever, holding the
// plug-in's call lock, so every later call would wait too. With them the failure comes back as an
// error instead. On a desktop the shell may still show its own failure messages.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <shellapi.h>

namespace slib {

// For SHFileOperationW: silent and unconfirmed always; FOF_NOERRORUI without a desktop.
FILEOP_FLAGS FileOperationFlags();

}  // namespace slib
