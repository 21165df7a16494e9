#pragma once
// The answer of everything that shows the user something (the choosers, opening and revealing
// items) where nobody could see it: a Windows service, Wine without a display, and always a
// server engine on Linux.

namespace slib {

// 2400 "No interactive desktop to show the dialog on".
[[noreturn]] void ThrowNoInteractiveDesktop();

}  // namespace slib
