#include "console.h"

#include <unistd.h>

#include "core/utf.h"
#include "core/wide_text.h"

namespace fmhost::cli {

std::vector<std::u16string> CommandLineArguments(int argc, char** argv) {
    std::vector<std::u16string> args;
    for (int i = 1; i < argc; ++i)
        args.push_back(Utf8ToUtf16(argv[i]));
    return args;
}

void UseBinaryStreams() {}

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) != 0;
}

std::FILE* OpenForReading(const std::wstring& path) {
    return std::fopen(Utf16ToUtf8(Utf16FromWide(path)).c_str(), "rb");
}

}  // namespace fmhost::cli
