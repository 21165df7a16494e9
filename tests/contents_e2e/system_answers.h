// What the plug-in answers differently on each system, as data: windows/ and posix/ hold the
// values, chosen by the build.
#pragma once

#include <set>
#include <string>

namespace contents_test {

// `bytes` decoded in the system's native code page, as UTF-8.
std::string NativeText(const std::string& bytes);

// Encoding keywords this system has no converter for: refused, the file kept as it was.
extern const std::set<std::string> kKeywordsWithoutConverter;

}  // namespace contents_test
