// fmhost.exe: a headless host that loads plug-ins and evaluates calculations (see --help).
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>

#include "cli_app.h"

int main() {
    int argc = 0;
    wchar_t** argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    std::vector<std::u16string> args;
    for (int i = 1; i < argc; ++i)
        args.emplace_back(reinterpret_cast<const char16_t*>(argv[i]));
    LocalFree(argv);

    // Results are UTF-8 bytes exactly as computed: no "\r\n" translation either way.
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);

    const fmhost::cli::ParsedOptions parsed = fmhost::cli::ParseOptions(args);
    if (!parsed.error.empty()) {
        std::fprintf(stderr, "fmhost: %s\n", parsed.error.c_str());
        return 2;
    }
    if (parsed.options.help) {
        std::fputs(fmhost::cli::UsageText(), stdout);
        return 0;
    }
    const fmhost::cli::Streams streams{stdin, stdout, stderr, _isatty(_fileno(stdin)) != 0};
    return fmhost::cli::Run(parsed.options, streams);
}
