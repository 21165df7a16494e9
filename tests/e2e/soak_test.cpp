// Ten thousand calls of the random-call soak: every call answered, the host exits normally, nothing
// written outside the scratch folder, and handles, GDI objects and private bytes flat over the
// run. scripts/soak.sh runs long ones.
#include <gtest/gtest.h>

#include "e2e/soak_run.h"

namespace {

TEST(Soak, AShortSeedLeavesTheHostWholeAndTheDiskOutsideUntouched) {
    const vf::soak::Figures figures = vf::soak::Run(20261123, 10000, 10000, vf::soak::Bounds(), {});
    EXPECT_EQ(figures.answered, figures.calls);
    for (const std::string& problem : figures.problems) {
        ADD_FAILURE() << problem;
    }
    RecordProperty("handle_growth", std::to_string(figures.handleGrowth));
    RecordProperty("private_growth", std::to_string(figures.privateGrowth));
}

}  // namespace
