// The system's own part of reading host path syntax.
#pragma once

#include <string>

namespace bridge {

// The native form of a path in host syntax, or the text unchanged when it is not in host syntax.
//   Windows: the text after the host's prefix ("file:", "filewin:", anything before the first
//            "/") when the segment between the first two "/" names a mounted volume, with "/"
//            turned into "\".
//   Linux:   the text from the first "/" on when all before it is a prefix of letters and a
//            colon ("filelinux:", "file:").
std::u16string HostSyntaxToNative(const std::u16string& hostPath);

}  // namespace bridge
