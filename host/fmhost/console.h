// The process's command line and standard streams, as each system hands them over.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace fmhost::cli {

// The arguments after the program's name, as UTF-16.
std::vector<std::u16string> CommandLineArguments(int argc, char** argv);
// Results are bytes exactly as computed: no line-end translation either way.
void UseBinaryStreams();
bool IsTerminal(std::FILE* stream);
// Null when the file cannot be opened.
std::FILE* OpenForReading(const std::wstring& path);

}  // namespace fmhost::cli
