// A short seed of the random-call soak (VF_SOAK_CALLS calls, fewer under the sanitizers): every
// call answered, the host exits normally, nothing written outside the scratch folder, and
// handles, GDI objects and private bytes flat over the run. scripts/soak.sh runs long ones.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "e2e/soak_run.h"

namespace {

TEST(Soak, AShortSeedLeavesTheHostWholeAndTheDiskOutsideUntouched) {
    vf::soak::Bounds bounds;
    bounds.privateBytes = VF_SOAK_PRIVATE_BYTES;
    // Under a user-mode emulator the host's private bytes include the emulator's cache of
    // translated code, which grows with every code path the calls reach for the first time:
    // that growth is the emulator's, so only handles and answers are held to account there.
    const char* emulator = std::getenv("VF_TEST_EMULATOR");
    if (emulator != nullptr && *emulator != '\0') {
        bounds.privateBytes = std::numeric_limits<int64_t>::max();
        std::printf("private bytes not bounded: the host runs under %s\n", emulator);
    }
    const vf::soak::Figures figures =
        vf::soak::Run(20261123, VF_SOAK_CALLS, VF_SOAK_CALLS, bounds, {});
    EXPECT_EQ(figures.answered, figures.calls);
    for (const std::string& problem : figures.problems) {
        ADD_FAILURE() << problem;
    }
    RecordProperty("handle_growth", std::to_string(figures.handleGrowth));
    RecordProperty("private_growth", std::to_string(figures.privateGrowth));
}

}  // namespace
