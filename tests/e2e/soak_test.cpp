// A short seed of the random-call soak (VF_SOAK_CALLS calls, fewer under the sanitizers): every
// call answered, the host exits normally, nothing written outside the scratch folder, and
// handles, GDI objects and private bytes flat over the run. scripts/soak.sh runs long ones.
#include <gtest/gtest.h>

#include "e2e/soak_run.h"

namespace {

TEST(Soak, AShortSeedLeavesTheHostWholeAndTheDiskOutsideUntouched) {
    vf::soak::Bounds bounds;
    bounds.privateBytes = VF_SOAK_PRIVATE_BYTES;
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
