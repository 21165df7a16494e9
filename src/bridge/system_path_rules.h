// Paths read and written by this system's rules: slib::Path's Windows rules on Windows, the
// POSIX rules (foundation/posix_path_rules.h) on Linux.
#pragma once

#include <memory>
#include <string>

#include "foundation/path.h"
#include "foundation/utf16_string.h"

namespace bridge {

std::shared_ptr<slib::Path> ParseSystemPath(const std::u16string& text, const slib::Path& anchor);
std::shared_ptr<const slib::String> FormatSystemPath(const slib::Path& path, int style,
                                                     const slib::Path& anchor);

}  // namespace bridge
