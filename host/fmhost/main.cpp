// fmhost: a headless host that loads plug-ins and evaluates calculations (see --help).
#include <cstdio>

#include "cli_app.h"
#include "console.h"

int main(int argc, char** argv) {
    const std::vector<std::u16string> args = fmhost::cli::CommandLineArguments(argc, argv);
    fmhost::cli::UseBinaryStreams();

    const fmhost::cli::ParsedOptions parsed = fmhost::cli::ParseOptions(args);
    if (!parsed.error.empty()) {
        std::fprintf(stderr, "fmhost: %s\n", parsed.error.c_str());
        return 2;
    }
    if (parsed.options.help) {
        std::fputs(fmhost::cli::UsageText(), stdout);
        return 0;
    }
    const fmhost::cli::Streams streams{stdin, stdout, stderr, fmhost::cli::IsTerminal(stdin)};
    return fmhost::cli::Run(parsed.options, streams);
}
