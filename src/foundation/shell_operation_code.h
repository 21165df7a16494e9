#pragma once
// What a failed shell file operation (SHFileOperationW) returned, as one of our codes. Its return
// value is not a system error: most values are the shell's own DE_* numbers, some are Win32
// errors, and which is which the documentation lists.

#include <cstdint>

namespace slib {

// The code for the shell's nonzero return value: the documented DE_* meaning, else the Win32
// meaning we classify, else -36 (a failure nobody explained). Never 0.
int32_t ShellOperationCode(int32_t result);

}  // namespace slib
