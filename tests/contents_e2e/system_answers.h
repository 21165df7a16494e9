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

// Who reads RTF: the system's rich-edit control (Windows) or our own reader (Linux).
enum class RtfReader { kSystemControl, kPortable };
extern const RtfReader kRtfReader;
// Whether \scaps and \caps survive reading (Wine's control drops them; asked of it at run time).
bool RtfReaderKeepsCapitals();

}  // namespace contents_test
