#pragma once
// Stored names without the UTF-8 flag are in the OEM code page of the system that wrote them;
// this system's own OEM code page is the best guess.

#include <string>
#include <string_view>

namespace archive {

std::u16string DecodeOemName(std::string_view bytes);

}  // namespace archive
