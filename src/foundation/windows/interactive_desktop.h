#pragma once
// Whether a dialog can be shown to anyone at all. A modal dialog where nobody sees it never
// returns (a service's window station is invisible), or returns at once as if cancelled (Wine
// without a display): either way the caller would be misled, so the choosers ask first.

namespace slib {
namespace file_manager_detail {

// Whether anyone can see and answer a window of this process: its window station is visible and
// a hidden top-level window can be created. Tests force the answer with the environment variable
// VF_TEST_DESKTOP ("none" or "interactive"); any other value, or none, asks the system.
bool HasInteractiveDesktop();

// Throws 2400 "No interactive desktop to show the dialog on" when this process's window station
// is not visible or a hidden top-level window cannot be created.
void RequireInteractiveDesktop();

}  // namespace file_manager_detail
}  // namespace slib
