// The preferences action's about window.
#pragma once

#include <string>

namespace fmlib {

// Modal on Windows. A server engine on Linux has no desktop to show it on: nothing happens.
void ShowAboutBox(const std::u16string& title, const std::u16string& body);

}  // namespace fmlib
