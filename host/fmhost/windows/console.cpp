#include "console.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace fmhost::cli {

// The wide command line: the narrow argv is in the ANSI code page and loses what it cannot hold.
std::vector<std::u16string> CommandLineArguments(int, char**) {
    int argc = 0;
    wchar_t** argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    std::vector<std::u16string> args;
    for (int i = 1; i < argc; ++i)
        args.emplace_back(reinterpret_cast<const char16_t*>(argv[i]));
    LocalFree(argv);
    return args;
}

void UseBinaryStreams() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

bool IsTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

std::FILE* OpenForReading(const std::wstring& path) {
    return _wfopen(path.c_str(), L"rb");
}

}  // namespace fmhost::cli
