// fmhost's run: loads the plug-ins, evaluates the calculations, prints results and reports.
#pragma once

#include <cstdio>

#include "cli_options.h"

namespace fmhost::cli {

struct Streams {
    std::FILE* in;
    std::FILE* out;
    std::FILE* err;
    bool inIsTerminal;
};

// The process's exit status (see UsageText).
int Run(const Options& options, const Streams& streams);

}  // namespace fmhost::cli
