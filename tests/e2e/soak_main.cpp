// soak_runner CALLS SEED [BATCH]: the random-call soak at any length, for scripts/soak.sh.
// soak_runner --print CALLS SEED: the calculations a seed makes, as an fmhost script, to replay
// a failing run by hand.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "e2e/soak_generator.h"
#include "e2e/soak_run.h"

int main(int argc, char** argv) {
    if (argc == 4 && std::string(argv[1]) == "--print") {
        vf::soak::CallGenerator generator(std::strtoull(argv[3], nullptr, 10), "file:/C:/soak/s/");
        for (size_t i = std::strtoull(argv[2], nullptr, 10); i > 0; --i) {
            std::printf("%s\n\n", generator.next().c_str());
        }
        return 0;
    }
    if (argc < 3) {
        std::fprintf(stderr, "usage: soak_runner CALLS SEED [BATCH] | --print CALLS SEED\n");
        return 2;
    }
    const size_t calls = std::strtoull(argv[1], nullptr, 10);
    const uint64_t seed = std::strtoull(argv[2], nullptr, 10);
    const size_t batch = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 10000;
    const vf::soak::Figures figures =
        vf::soak::Run(seed, calls, batch == 0 ? 10000 : batch, vf::soak::Bounds(),
                      [](const std::string& line) { std::printf("%s\n", line.c_str()); });
    std::printf("seed %llu: %zu calls in %zu host runs, %zu answered, %.1f s\n",
                static_cast<unsigned long long>(seed), figures.calls, figures.batches,
                figures.answered, figures.seconds);
    std::printf("largest growth over one run: %lld handles, %s GDI objects, %lld private bytes\n",
                static_cast<long long>(figures.handleGrowth),
                figures.gdiGrowth ? std::to_string(*figures.gdiGrowth).c_str() : "uncounted",
                static_cast<long long>(figures.privateGrowth));
    for (const std::string& problem : figures.problems) {
        std::printf("PROBLEM %s\n", problem.c_str());
    }
    return figures.problems.empty() ? 0 : 1;
}
